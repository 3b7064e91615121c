/* include/orvel/host.h - what a service, a window program, an interpreter or a test needs beyond the
 * classic interface: where messages go, what a stop does, the switches of threads that start later, calls
 * whose errors are values, functions with a context, the instruction-set level and the version.
 *
 * Arguments go by value. Settings are process-wide and may be made from any thread at any time.
 */
#ifndef ORVEL_HOST_H
#define ORVEL_HOST_H

#include "orvel/types.h"

ORVEL_BEGIN

/* Receives the output for a unit: one call per message, whole lines with their ends. It runs on the thread
 * that prints, under the print lock, so that two messages never mix; the thread is not cancelled meanwhile.
 * It may throw a C++ exception, which reaches the caller of the routine. It may call the library, also from
 * the threads of an OpenMP region that it opens; what they print calls writers once more, one at a time,
 * before the first call returns. Messages from within seven calls go to standard error instead. It must not
 * wait for any other thread that prints.
 *
 *     static void to_log(void *log, int32_t unit, const char *text, size_t length)
 *     { log_write(log, text, length); }
 *     orvel_bind_unit(6, to_log, my_log);
 */
typedef void (*orvel_writer)(void* context, int32_t unit, const char* text, size_t length);

/* Sends the output for a unit to a writer from now on. Returns 1, or 0 when 64 other units are bound
 * already. When it returns, no other thread is inside the writer that was bound before, nor will be: what
 * that one uses may go. So hold nothing that it waits for.
 *
 *     UNIT     in        the number of the unit
 *     WRITER   function  the writer; null gives the unit back to its stream or file
 *     CONTEXT  in        handed on to the writer
 */
int32_t orvel_bind_unit(int32_t unit, orvel_writer writer, void* context);

/* Called in place of ending the process, on the thread that stops, with the type and code of the error. It
 * may be called on several threads at once. It may
 *
 *     - throw a C++ exception: routines on the way are left properly and the exception reaches the caller;
 *     - leave by longjmp and then call orvel_reset;
 *     - end its thread by pthread_exit: routines on the way are left properly, too;
 *     - return: the process ends.
 *
 *     static void to_exception(void *, int32_t type, int32_t code) { throw numeric_error(type, code); }
 *     orvel_set_stop_handler(to_exception, nullptr);
 */
typedef void (*orvel_stop_handler)(void* context, int32_t type, int32_t code);

/* Sets what a stop does.
 *
 *     HANDLER  function  the handler; null ends the process
 *     CONTEXT  in        handed on to the handler
 */
void orvel_set_stop_handler(orvel_stop_handler handler, void* context);

/* A stop handler that also receives the name of the routine and the text of its last message, with lines
 * that end where the text asks for it. Both may be empty, and are gone when it returns. */
typedef void (*orvel_stop_text_handler)(void* context, int32_t type, int32_t code, const char* routine,
                                        const char* text);

/* Sets what a stop does, as orvel_set_stop_handler, whose handler it replaces; that one replaces this.
 *
 *     HANDLER  function  the handler; null ends the process
 *     CONTEXT  in        handed on to the handler
 */
void orvel_set_stop_text_handler(orvel_stop_text_handler handler, void* context);

/* Sets the exit status of a stop, 0 unless set.
 *
 *     STATUS  in  the status
 *
 *     orvel_set_stop_status(3);       // let the shell see that the run was stopped
 */
void orvel_set_stop_status(int32_t status);

/* Print and stop switches with which threads start that have not yet called the library. Threads that have
 * called it keep theirs. In ERSET, action 2 is always the library's initial value. Returns 1, or 0 for an
 * argument out of range.
 *
 *     TYPE   in  0: all types; 1 to 5 one type, as in ERSET
 *     PRINT  in  -1: as is; 0: off; 1: on; 2: the initial value
 *     STOP   in  -1: as is; 0: off; 1: on; 2: the initial value
 *
 *     orvel_set_thread_defaults(0, -1, 0);   // no thread of an OpenMP team stops the program
 */
int32_t orvel_set_thread_defaults(int32_t type, int32_t print, int32_t stop);

/* Brings the calling thread's routine stack back to level 1, without error, message or print lock, after a
 * stop handler or a writer left by longjmp. Switches and units stay as they are. Scratch storage of the
 * routines that were jumped over is lost; throw where that matters.
 *
 *     if (setjmp(mark) == 0) run(); else orvel_reset();
 */
void orvel_reset(void);

/* What quiet calls have posted. Only the first four members are the caller's to read. */
struct orvel_outcome {
    int32_t severity;            /* the type of the last error, 1 to 7; 0 for none */
    int32_t code;                /* its code */
    char routine[40];            /* the routine of the last message */
    char text[2024];             /* all messages, separated by line ends, as far as there is room */
    int32_t level;               /* the level of the stack that the calls are made from */
    int32_t length;              /* of the text */
    struct orvel_outcome* outer; /* the outcome that is kept again afterwards */
    void* place;                 /* where the thread keeps the address of the outcome in use */
};

/* Begins quiet calls: until orvel_end_quiet, nothing is printed and nothing stops on the calling thread,
 * whatever its switches say; they stay as they are. What the calls post is kept in the outcome. Errors of
 * calls inside a user's function are not those of the routine that called it, and are kept nowhere. Pairs
 * may be nested. Misuse of the frame still stops the program, save inside orvel_with_context, which it ends.
 *
 *     OUTCOME  out  the outcome; it stays in use until orvel_end_quiet
 *
 *     struct orvel_outcome o;
 *     orvel_begin_quiet(&o);
 *     LSARG(&n, a, &n, b, &path, x);
 *     orvel_end_quiet(&o);
 *     if (o.severity >= 4) give_up(o.routine, o.code, o.text);
 */
void orvel_begin_quiet(struct orvel_outcome* outcome);

/* Ends quiet calls, those begun last.
 *
 *     OUTCOME  inout  the outcome of these calls
 */
void orvel_end_quiet(struct orvel_outcome* outcome);

/* A function of the caller's of one variable, with a context. It stores its value in *FX and returns 0, or it
 * returns another number, which ends the routine that called it. It may throw as well. */
typedef int32_t (*orvel_context_function)(void* context, double x, double* fx);

/* Calls routines, with F or DF as their argument that is a function. */
typedef void (*orvel_context_call)(void* argument, orvel_function f, orvel_dfunction df);

/* Makes a function with a context known to routines that take a function of one argument, and calls CALL.
 * Returns 0, or what FUNCTION returned to end the call: then the routines on the way have been left
 * properly, storage freed, nothing printed, their outputs as far as they were computed. Returns -1 when
 * FUNCTION has nested more quiet calls than the stack of routines holds. Calls may be nested; F and DF are
 * good during the call, on the calling thread.
 *
 *     FUNCTION  function  the function
 *     CONTEXT   in        handed on to the function
 *     CALL      function  the call; the end of a routine leaves it as an exception does
 *     ARGUMENT  in        handed on to the call
 *
 *     static int32_t line(void *slope, double x, double *fx) { *fx = *(double *)slope * x; return 0; }
 *     static void integrate(void *to, orvel_function f, orvel_dfunction df)
 *     { double a = 0, b = 3, abs = 0, rel = 1e-10, error; DQDAGS(df, &a, &b, &abs, &rel, to, &error); }
 *     orvel_with_context(line, &slope, integrate, &integral);
 */
int32_t orvel_with_context(orvel_context_function function, void* context, orvel_context_call call,
                           void* argument);

/* Calls one routine whose first argument is a function, as orvel_with_context does, without a function of
 * the caller's between them: for interpreters, whose own frames no exception may cross. Returns as
 * orvel_with_context; -2, without a call, for a COUNT out of range.
 *
 *     FUNCTION          function  the function
 *     CONTEXT           in        handed on to the function
 *     ROUTINE           function  the routine
 *     SINGLE            in        1: the routine takes an orvel_function; 0: an orvel_dfunction
 *     COUNT             in        the number of arguments behind the function, 0 to 19
 *     ARGUMENTS(COUNT)  in        their addresses
 */
int32_t orvel_call_with_context(orvel_context_function function, void* context, orvel_routine routine,
                                int32_t single, int32_t count, const orvel_address* arguments);

/* Uses the hot loops of an instruction-set level from now on. Returns 1, or 0 for a level that is unknown or
 * that the machine does not have; then nothing changes.
 *
 *     NAME(*)  in  the level, as compilers name it for -march: x86-64, x86-64-v3 or x86-64-v4; on other
 *                  processors there is one level, native; null goes back to the best level of the machine,
 *                  which is also what is used until somebody asks
 *
 * Levels round differently, since only some have fused operations. The same call gives the same bits on all
 * machines of a cluster when each of them uses the level of the oldest.
 *
 * Threads: the choice holds for all threads from their next call on. It is safe while calls are under way;
 * such a call may finish at the new level, and its results are then those of neither.
 *
 *     if (!orvel_use_level("x86-64-v3")) fputs("this machine is too old\n", stderr);
 */
int32_t orvel_use_level(const char* name);

/* The name of the instruction-set level in use. It stays valid until the library is unloaded. */
const char* orvel_level(void);

/* The version of the library, as ORVEL_VERSION is that of the headers. */
const char* orvel_version(void);

ORVEL_END

#endif
