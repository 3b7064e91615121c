/* include/orvel/frame.h - the frame that every routine runs in
 *
 * A routine pushes its name on the routine stack of the calling thread, posts numbered errors, and pops its
 * name. At the pop the frame decides, by the severity of the error and by the switches that the caller has
 * set with ERSET, whether to print the message and whether to stop the program:
 *
 *     type  word      meaning                                       printed  stops
 *     1     NOTE      information; not passed up to the caller         no     no
 *     2     ALERT     a result may be inaccurate                       no     no
 *     3     WARNING   the result is usable but doubtful                yes    no
 *     4     FATAL     the result is wrong or missing                   yes    yes
 *     5     TERMINAL  the call was invalid                             yes    yes
 *     6     WARNING   printed as soon as it is posted                  yes    no
 *     7     FATAL     printed as soon as it is posted                  yes    yes
 *
 * Example: keep the program going and look at the outcome.
 *
 *     int32_t all = 0, keep = -1, off = 0, above = 1;
 *     ERSET(&all, &keep, &off);                       // print as before, never stop
 *     float x = -3.0f, g = GAMMA(&x);                 // prints a message, returns the quiet NaN
 *     if (N1RTY(&above) >= 3) handle(N1RCD(&above));  // type 5, code 6
 *
 * All state is private to the calling thread and is set up at the thread's first call. Posting and printing
 * a message takes at most 4 KB of stack, beside what a writer of the host takes. Misuse of the frame itself
 * (stack overflow, a pop that does not match, a bad option of N1RTY, N1RCD or N1RNOF) always stops the
 * program. What "stop" does in a host that must live on: see orvel/host.h.
 *
 *     NAME(*)  in  the name of a routine, kept blank-padded or cut to 32 characters
 */
#ifndef ORVEL_FRAME_H
#define ORVEL_FRAME_H

#include "orvel/types.h"

ORVEL_BEGIN

/* ---- blocks of state, one copy per thread --------------------------------------------------------------
 *
 */

/* Error records, switches and lengths. Values that a program stores here by hand are honoured where they
 * make sense; a level or length that would lead outside an array is taken as the nearest valid one.
 */
struct orvel_ercom1 {
    int32_t level;              /* current stack level; 1 is the user */
    int32_t maxlev;             /* deepest level allowed, 50 */
    int32_t msglen;             /* length of the message in the buffer, 0 for none */
    int32_t ertype[51];         /* error type of each level; -1 where nothing is recorded */
    int32_t ercode[51];         /* error code of each level; -1 where nothing is recorded */
    int32_t prttab[7];          /* print switch of each type: 1 on, 0 off */
    int32_t stptab[7];          /* stop switch of each type: 1 on, 0 off */
    int32_t parlen;             /* last used character of the parameter store; 1 when empty */
    int32_t post6;              /* 1 after a type 6 error was posted, until a pop has judged it */
    int32_t post7;              /* the same for type 7 */
    int32_t reserved;           /* 0 */
    int32_t level_reserved[50]; /* 0 */
    int32_t atttab[7];          /* header form of each type: 1 code and routine, 2 bare, 3 source and line */
    int32_t trctab[7];          /* traceback switch of each type */
    int32_t memslt[10];         /* slots kept by E1MEM */
    char linalg[6];             /* name kept by E1MEM, "LINPAK" */
};
struct orvel_ercom2 {
    char message[1024];   /* the current message; begins with ".  " */
    char parameters[300]; /* entries: "*", kind, index, "*", length in decimal, "%", text */
    char rname[50][32];   /* routine names, blank-padded; level 1 is "USER" */
};
struct orvel_ercom3 {
    double checksum; /* of all messages posted on this thread; see E1UCS */
};
struct orvel_ercom4 {
    int32_t user[51]; /* LOGICAL: does this level count as the user? */
};

/* Source entries for headers of form 3. */
struct orvel_ercom8 {
    int32_t current;         /* index of the current entry, 1..10 */
    int32_t line[10];        /* line number of each entry */
    int32_t name_length[10]; /* length of each name in ERCOM9 */
    int32_t reserved[10];    /* 0 */
};
struct orvel_ercom9 {
    char name[10][31]; /* "?" for no source entry */
};
extern ORVEL_PER_THREAD struct orvel_ercom1 ERCOM1;
extern ORVEL_PER_THREAD struct orvel_ercom2 ERCOM2;
extern ORVEL_PER_THREAD struct orvel_ercom3 ERCOM3;
extern ORVEL_PER_THREAD struct orvel_ercom4 ERCOM4;
extern ORVEL_PER_THREAD struct orvel_ercom8 ERCOM8;
extern ORVEL_PER_THREAD struct orvel_ercom9 ERCOM9;

/* ---- routine stack -------------------------------------------------------------------------------------
 *
 */

/* Pushes a name on the routine stack. It holds the user and 49 routines.
 *
 *     TERMINAL 1  one routine more than the stack holds; always stops the program
 *                 "Error condition in E1PSH.  Push would cause stack level to exceed %(I1). "
 */
void E1PSH(const char* name, size_t len);

/* Pops a name, prints the message posted at this level and stops, as the switches say. When the stop is
 * turned into an exception or a jump by a stop handler, the level has already been left.
 *
 *     TERMINAL 1  the stack is empty; always stops the program
 *                 "Error condition in E1POP.  Cannot pop from %(L1) because stack is empty."
 *     TERMINAL 2  NAME is not the one on top; always stops the program
 *                 "Error condition in E1POP.  %(L1) does not match the name %(L2) in the stack."
 */
void E1POP(const char* name, size_t len);

/* Sets this thread's blocks to their initial values. It does nothing after its first run on a thread; every
 * routine of the frame does this by itself.
 */
void E1INIT(void);

/* Marks the current level as the user or not, so that errors of the routines that it calls are reported as
 * if the user had called them. The error is posted at the current level.
 *
 *     SWITCH(*)   in  ON or on: the user; OFF or off: not
 *     TERMINAL 1  SWITCH is none of these
 *                 "Invalid value for SWITCH in call to E1USR.  SWITCH must be set to 'ON' or 'OFF'.  SWITCH
 *                 = '%(L1)' "
 */
void E1USR(const char* switch_, size_t len);

/* ---- outcome of calls ----------------------------------------------------------------------------------
 *
 */

/* Code of the last routine that returned to this level when its type was 1 to 4, else 0. A TERMINAL error
 * and types 6 and 7 give 0 even when their stop is off.
 */
int32_t IERCD(void);

/* Type of an error, 0 for none.
 *
 *     IOPT        in  0: recorded at the current level; 1: by the routine most recently returned from
 *     TERMINAL 1  IOPT is neither 0 nor 1; always stops the program
 *                 ".  The argument passed to N1RTY must be 0 or 1."
 */
int32_t N1RTY(const int32_t* iopt);

/* Code of an error.
 *
 *     IOPT        in  0: recorded at the current level; 1: by the routine most recently returned from
 *     TERMINAL 1  IOPT is neither 0 nor 1; always stops the program
 *                 ".  The argument passed to N1RCD must be 0 or 1."
 */
int32_t N1RCD(const int32_t* iopt);

/* A counter of this thread.
 *
 *     IOPT        in  1: adds one and returns it; 2: returns it and sets it to 0
 *     TERMINAL 1  IOPT is neither 1 nor 2; always stops the program
 *                 ".  The argument passed to N1RNOF must be 1 or 2. "
 */
int32_t N1RNOF(const int32_t* iopt);

/* Stop switch that the pop applies to posted errors of types 6 and 7. Type 7 decides; it spends both
 * records.
 */
int32_t N1RGB(void);

/* Returns 1. */
int32_t N1THRD(void);

/* ---- switches ------------------------------------------------------------------------------------------
 *
 */

/* Sets print and stop switches of this thread. For threads that start later see orvel_set_thread_defaults.
 *
 *     IERSVR      in  0: all types; 1 to 5 one type, of which 3 also sets type 6, and 4 type 7
 *     IPACT       in  the print switch: -1 as is, 0 off, 1 on, 2 the initial value
 *     ISACT       in  the stop switch, in the same way
 *     TERMINAL 1  IERSVR is not 0 to 5
 *                 "Invalid error severity level indicator.  IERSVR must be 0 to 5.  IERSVR = %(I1)"
 *     TERMINAL 2  IPACT is not -1 to 2
 *                 "Invalid value specified for printing action.  IPACT must be -1 to 2.  IPACT = %(I1)"
 *     TERMINAL 3  ISACT is not -1 to 2
 *                 "Invalid value specified for stopping action.  ISACT must be -1 to 2.  ISACT = %(I1)"
 *
 * After an error: nothing is changed.
 */
void ERSET(const int32_t* iersvr, const int32_t* ipact, const int32_t* isact);

/* Sets or returns the switches of one type, without a frame of its own. Errors are posted at the current
 * level; called by the user directly, no pop follows, so the stop switch is obeyed at once.
 *
 *     IERTYP      in      0 to 7 sets the switches of the type, 0 of all; -7 to -1 returns those of type
 *                         -IERTYP; other values do nothing
 *     IPATT       in/out  the print switch, -1 as is, 0 off, 1 on, 2 the initial value
 *     ISATT       in/out  the stop switch, in the same way
 *     TERMINAL 1  IPATT is not -1 to 2
 *                 "Invalid value specified for print table attribute.  IPATT must be -1, 0, 1, or 2.  IPATT
 *                 = %(I1)"
 *     TERMINAL 1  ISATT is not -1 to 2
 *                 "Invalid value specified for stop table attribute.  ISATT must be -1, 0, 1, or 2.  ISATT
 *                 = %(I1)"
 *
 * After an error: nothing is changed.
 */
void E1POS(const int32_t* iertyp, int32_t* ipatt, int32_t* isatt);

/* Keeps a number and a name for other routines. The value is -1 (true) after GET when the name is "LAPACK"
 * or "lapack", else 0.
 *
 *     ACTION(*)  in      SET or set: stores both; GET or get: returns both, as any other value does
 *     I          in      the slot, 1 to 10; any other is neither stored nor read
 *     IVALUE     in/out  the number
 *     NAME(*)    in/out  the name, 6 characters
 */
int32_t E1MEM(const char* action, const int32_t* i, int32_t* ivalue, char* name, size_t action_len,
              size_t name_len);

/* ---- messages ------------------------------------------------------------------------------------------
 *
 */

/* Posts an error at the current level: type, code and message template. In the template "%(I1)" stands for
 * integer parameter 1, and so on; "%/" starts a new line. Types 5, 6 and 7 print now, when their switch is
 * on. The parameters are emptied after every message.
 *
 *     IERTYP     in  the type; -1 keeps the recorded one; one outside 0..7 is recorded and never printed,
 *                    passed up or stopped on
 *     IERCOD     in  the code; a negative one keeps the recorded one; type 0 with code 0 clears the error
 *     MSGPKD(*)  in  the template; an empty or one-blank one keeps the message in the buffer
 */
void E1MES(const int32_t* iertyp, const int32_t* iercod, const char* msgpkd, size_t len);

/* Prints the current message on the error unit, with a traceback when the routine was called by another,
 * and empties the buffer. A recorded type outside 1..7 prints as UNKNOWN.
 */
void E1PRT(void);

/* Folds the current message, less the numbers in it, into ERCOM3. A number is a sign, digits with at most
 * one point and an exponent, right after a blank, comma, opening bracket or equals sign.
 */
void E1UCS(void);

/* Sets message parameter ID to a number. The first of two settings holds; what does not fit into the store
 * of 300 characters is dropped. Reals print as 1.234560E+01, in double members with 15 digits after the
 * point; an exponent beyond 99 has three digits.
 *
 *     ID      in  the index, 1 to 9; other values are ignored
 *     IVALUE  in  the number
 *     RVALUE  in  the number
 *     DVALUE  in  the number
 *     CVALUE  in  the number
 *     ZVALUE  in  the number
 */
void E1STI(const int32_t* id, const int32_t* ivalue);
void E1STR(const int32_t* id, const float* rvalue);
void E1STD(const int32_t* id, const double* dvalue);
void E1STC(const int32_t* id, const orvel_complex* cvalue);
void E1STZ(const int32_t* id, const orvel_dcomplex* zvalue);

/* Sets message parameter ID to a text, at most 255 characters.
 *
 *     ID         in  the index: trailing blanks are cut for 1 to 9 and kept for -9 to -1
 *     STRING(*)  in  the text
 */
void E1STL(const int32_t* id, const char* string, size_t len);

/* Sets message parameter ID to the first characters of a text.
 *
 *     ID         in  the index, as in E1STL
 *     LEN        in  the number of characters, no more than the text has; a negative one is 0
 *     STRING(*)  in  the text
 */
void E1STA(const int32_t* id, const int32_t* len, const char* string, size_t string_len);

/* Posts an error whose template is a record of the message file. The file is "messages.daf" in the
 * directory named by the environment variable TAL_F90_MSG (at most 128 characters): records of 1024
 * characters, numbered from 1, blank-padded, without separators; a blank record counts as absent.
 * tools/make_message_file.py writes one. A packet is an array EPACK(N):
 *
 *     EPACK(1).whole  number of the record        EPACK(4).whole  print switch, as in ERSET
 *     EPACK(2).whole  type, 1..7                  EPACK(5).whole  stop switch, as in ERSET
 *     EPACK(3).whole  code                        EPACK(6).whole  NI, integer parameters, 0..9
 *     EPACK(7).whole  NR, real parameters, 0..9
 *     EPACK(8 .. 7+NI).whole                      parameters %(I1), %(I2), ...
 *     EPACK(8+NI .. 7+NI+NR).real                 parameters %(R1), ... (%(D1), ... for D_ERROR_POST)
 *
 * Switches other than -1 stay set after the call; types 6 and 7 go with 3 and 4.
 *
 *     EPACK(N)    in  the packet
 *     N           in  its length
 *     TERMINAL 1  the packet is shorter than it should be
 *                 "The size of derived type epack is abruptly truncated.  It should be at least %(i1)."
 *     TERMINAL 2  the file cannot be opened
 *                 "Unable to open the Orvel MP Library Error message file!"
 *     TERMINAL 3  the record cannot be read
 *                 "Unable to read a record from the Orvel MP Library Error message file!"
 */
struct orvel_s_epack {
    int32_t whole;
    float real;
};
struct orvel_d_epack {
    int32_t whole;
    double real;
};
void S_ERROR_POST(const struct orvel_s_epack* epack, const int32_t* n);
void D_ERROR_POST(const struct orvel_d_epack* epack, const int32_t* n);

/* ---- machine constants and units -----------------------------------------------------------------------
 *
 */

/* Constants of the arithmetic (IEEE 754 binary32, binary64). SRMACH and DRMACH are the same as AMACH and
 * DMACH.
 *
 *     N  in  1 to 8
 *
 *     1 smallest normalised number     5 common logarithm of 2
 *     2 largest number                 6 quiet NaN
 *     3 smallest relative spacing      7 positive infinity
 *     4 largest relative spacing       8 negative infinity
 *
 *     TERMINAL 5  N is not 1 to 8; the value is the quiet NaN
 *                 "The argument must be between 1 and 8 inclusive. N = %(I1)"
 */
float AMACH(const int32_t* n);
double DMACH(const int32_t* n);
float SRMACH(const int32_t* n);
double DRMACH(const int32_t* n);

/* Integer constants. An N outside 1..12 prints a message on the output unit and stops the program.
 *
 *     N  in  1 to 12
 *
 *     1 bits per integer               7 digits in a single mantissa (24)
 *     2 characters per integer         8, 9 smallest, largest single exponent (-125, 128)
 *     3 base of integers               10 digits in a double mantissa (53)
 *     4 its digits in an integer       11, 12 smallest, largest double exponent (-1021, 1024)
 *     5 largest integer
 *     6 base of reals
 */
int32_t IMACH(const int32_t* n);

/* Returns or sets unit numbers of this thread: 1 input (5), 2 output (6), 3 error messages (6). Any other
 * unit number prints a message on the error unit and stops the program. Unit 5 is standard input, 6
 * standard output, 0 standard error; any other unit K is the file "fort.K" in the working directory, shared
 * by all threads. At the first use what an earlier program has left in it is dropped; what was written
 * since this program began stays, and text is always appended. A message whose file cannot be opened goes
 * to standard error, and so does one for anything but a regular file, a terminal or the null device.
 *
 * Messages follow what the program itself has printed so far, in C on standard output or in Fortran on the
 * unit of the same number. Still, a unit that a Fortran program has opened is a different thing from the
 * library's unit of that number. When both write to one file, no line of the program is lost, but messages
 * are: the program goes on where its own last line ended, over the message, and starts the file anew when
 * it opens it after the library. So give the library a number of its own.
 *
 *     N      in      1 to 3 returns the unit in NUNIT; -3 to -1 sets it to NUNIT
 *     NUNIT  in/out  the unit
 */
void UMACH(const int32_t* n, int32_t* nunit);

/* Array-style form of the constants: a value that holds the index and becomes the constant in the precision
 * of the variable it is assigned to. The Fortran module AMACH_INT makes these an assignment.
 *
 *     N      in   the index, as of AMACH
 *     X      out  the variable
 *     VALUE  in   what AMACH_INT_mp_AMACH has returned
 */
struct orvel_floating_point {
    int32_t n;
};
struct orvel_floating_point AMACH_INT_mp_AMACH(const int32_t* n);
void AMACH_INT_mp_REAL_EQ_FLOATING_POINT(float* x, const struct orvel_floating_point* value);
void AMACH_INT_mp_DOUBLE_EQ_FLOATING_POINT(double* x, const struct orvel_floating_point* value);
float AMACH_INT_mp_S_AMACH(const int32_t* n);
double AMACH_INT_mp_D_AMACH(const int32_t* n);

/* ---- workspace -----------------------------------------------------------------------------------------
 *
 */

/* Kept for programs that size a workspace pool. There is none, and these do nothing.
 *
 *     NSU     in  the size
 *     NCHARS  in  the size in characters
 */
void IWKIN(const int32_t* nsu);
void IWKCIN(const int32_t* nchars);

ORVEL_END

#endif
