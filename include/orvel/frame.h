/* include/orvel/frame.h - the frame that every routine runs in
 *
 * A routine pushes its name on the routine stack of the calling thread, posts numbered errors, and pops
 * its name. At the pop the frame decides, by the severity of the error and by the switches that the
 * caller has set with ERSET, whether to print the message and whether to stop the program:
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
 * a message takes at most 4 KB of stack, beside what a writer of the host takes.
 * Misuse of the frame itself (stack overflow, a pop that does not match, a bad option of N1RTY, N1RCD or
 * N1RNOF) always stops the program. What "stop" does in a host that must live on: see orvel/host.h.
 */
#ifndef ORVEL_FRAME_H
#define ORVEL_FRAME_H

#include "orvel/types.h"

ORVEL_BEGIN

/* ---- blocks of state, one copy per thread ------------------------------------------------------- */

/* Error records, switches and lengths. Values that a program stores here by hand are honoured where they
 * make sense; a level or length that would lead outside an array is taken as the nearest valid one. */
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

/* ---- routine stack ------------------------------------------------------------------------------ */

/* Push NAME of LEN characters, kept blank-padded or cut to 32. Holds the user and 49 routines; one more
 * stops the program. NAME in. */
void E1PSH(const char* name, size_t len);

/* Pop NAME, print the message posted at this level and stop, as the switches say. An empty stack (code 1)
 * or a name other than the one on top (code 2) stops the program. When the stop is turned into an exception
 * or a jump by a stop handler, the level has already been left. */
void E1POP(const char* name, size_t len);

/* Set this thread's blocks to their initial values; does nothing after its first run on a thread. Every
 * routine of the frame does this by itself. */
void E1INIT(void);

/* Mark the current level as the user ("ON" or "on") or not ("OFF" or "off"), so that errors of the
 * routines that it calls are reported as if the user had called them. Anything else posts TERMINAL code 1
 * at the current level. SWITCH in. */
void E1USR(const char* switch_, size_t len);

/* ---- outcome of calls --------------------------------------------------------------------------- */

/* Code of the last routine that returned to this level when its type was 1 to 4, else 0: a TERMINAL error
 * and types 6 and 7 give 0 even when their stop is off. */
int32_t IERCD(void);

/* Type (N1RTY) or code (N1RCD) recorded at the current level (IOPT 0) or by the routine most recently
 * returned from (IOPT 1). Any other IOPT stops the program. IOPT in. */
int32_t N1RTY(const int32_t* iopt);
int32_t N1RCD(const int32_t* iopt);

/* A counter of this thread: IOPT 1 adds one and returns it, IOPT 2 returns it and sets it to 0. Any other
 * IOPT stops the program. IOPT in. */
int32_t N1RNOF(const int32_t* iopt);

/* Stop switch that the pop applies to posted errors of types 6 and 7 (7 decides); spends both records. */
int32_t N1RGB(void);

/* Returns 1. */
int32_t N1THRD(void);

/* ---- switches ----------------------------------------------------------------------------------- */

/* Set print and stop switches of this thread: IERSVR 0 all types, 1..5 one type (3 also sets type 6, and 4
 * type 7); IPACT and ISACT -1 as is, 0 off, 1 on, 2 the initial value. Posts TERMINAL 1 (IERSVR not 0..5),
 * 2 (IPACT not -1..2), 3 (ISACT not -1..2) and then changes nothing. Acts on the calling thread only; for
 * threads that start later see orvel_set_thread_defaults. All in. */
void ERSET(const int32_t* iersvr, const int32_t* ipact, const int32_t* isact);

/* The same without a frame of its own. IERTYP 0..7 sets; -7..-1 returns the switches of type -IERTYP in
 * IPATT and ISATT; other values do nothing. A bad IPATT or ISATT posts TERMINAL code 1 at the current level
 * and changes nothing; called by the user directly, no pop follows, so the stop switch is obeyed at once. */
void E1POS(const int32_t* iertyp, int32_t* ipatt, int32_t* isatt);

/* Keep a number and a name for other routines. ACTION "SET" or "set" stores IVALUE in slot I (1..10) and
 * NAME (6 characters); "GET" or "get" returns both and the value -1 (true) when the name is "LAPACK" or
 * "lapack", else 0. Any other ACTION returns both and 0. A slot outside 1..10 is neither stored nor read. */
int32_t E1MEM(const char* action, const int32_t* i, int32_t* ivalue, char* name, size_t action_len,
              size_t name_len);

/* ---- messages ----------------------------------------------------------------------------------- */

/* Post an error at the current level: type, code and message template. In the template "%(I1)" stands for
 * integer parameter 1, and so on; "%/" starts a new line. Type -1 keeps the recorded type, a negative code
 * the recorded code, an empty or one-blank template the message in the buffer; type 0 with code 0 clears
 * the error. Types 5, 6 and 7 print now, when their switch is on. A type outside 0..7 is recorded and
 * never printed, passed up or stopped on. The parameters are emptied after every message. All in. */
void E1MES(const int32_t* iertyp, const int32_t* iercod, const char* msgpkd, size_t len);

/* Print the current message on the error unit, with a traceback when the routine was called by another, and
 * empty the buffer. A recorded type outside 1..7 prints as UNKNOWN. */
void E1PRT(void);

/* Fold the current message, less the numbers in it, into ERCOM3. A number is a sign, digits with at most one
 * point and an exponent, right after a blank, comma, opening bracket or equals sign. */
void E1UCS(void);

/* Set message parameter ID, 1..9 (other values are ignored). The first of two settings holds; what does not
 * fit into the store of 300 characters is dropped. Reals print as 1.234560E+01, in double members with 15
 * digits after the point; an exponent beyond 99 has three digits. All in. */
void E1STI(const int32_t* id, const int32_t* ivalue);
void E1STR(const int32_t* id, const float* rvalue);
void E1STD(const int32_t* id, const double* dvalue);
void E1STC(const int32_t* id, const orvel_complex* cvalue);
void E1STZ(const int32_t* id, const orvel_dcomplex* zvalue);
/* Text, at most 255 characters: trailing blanks are cut for positive ID and kept for ID -9..-1. */
void E1STL(const int32_t* id, const char* string, size_t len);
/* The first LEN characters of a text, no more than it has; a negative LEN is 0. */
void E1STA(const int32_t* id, const int32_t* len, const char* string, size_t string_len);

/* Post an error whose template is record NUMBER of the message file. The file is "messages.daf" in the
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
 * Switches other than -1 stay set after the call; types 6 and 7 go with 3 and 4. Posts TERMINAL 1 (packet
 * shorter than it should be), 2 (file cannot be opened), 3 (record cannot be read). EPACK(N) in, N in. */
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

/* ---- machine constants and units ---------------------------------------------------------------- */

/* Constants of the arithmetic (IEEE 754 binary32, binary64). N in:
 *
 *     1 smallest normalised number     5 common logarithm of 2
 *     2 largest number                 6 quiet NaN
 *     3 smallest relative spacing      7 positive infinity
 *     4 largest relative spacing       8 negative infinity
 *
 * N outside 1..8 posts TERMINAL code 5 and returns the quiet NaN. SRMACH and DRMACH are the same. */
float AMACH(const int32_t* n);
double DMACH(const int32_t* n);
float SRMACH(const int32_t* n);
double DRMACH(const int32_t* n);

/* Integer constants. N in:
 *
 *     1 bits per integer               7 digits in a single mantissa (24)
 *     2 characters per integer         8, 9 smallest, largest single exponent (-125, 128)
 *     3 base of integers               10 digits in a double mantissa (53)
 *     4 its digits in an integer       11, 12 smallest, largest double exponent (-1021, 1024)
 *     5 largest integer
 *     6 base of reals
 *
 * N outside 1..12 prints a message on the output unit and stops the program. */
int32_t IMACH(const int32_t* n);

/* Unit numbers of this thread: 1 input (5), 2 output (6), 3 error messages (6). N > 0 returns unit N in
 * NUNIT, N < 0 sets unit -N to NUNIT; any other N prints a message on the error unit and stops the program.
 * Unit 5 is standard input, 6 standard output, 0 standard error; any other unit K is the file "fort.K" in
 * the working directory, shared by all threads. At the first use what an earlier program has left in it is
 * dropped; what was written since this program began stays, and text is always appended. A message whose
 * file cannot be opened goes to standard error, and so does one for anything but a regular file, a terminal
 * or the null device.
 *
 * Messages follow what the program itself has printed so far, in C on standard output or in Fortran on the
 * unit of the same number. Still, a unit that a Fortran program has opened is a different thing from the
 * library's unit of that number. When both write to one file, no line of the program is lost, but messages
 * are: the program goes on where its own last line ended, over the message, and starts the file anew when it
 * opens it after the library. So give the library a number of its own. */
void UMACH(const int32_t* n, int32_t* nunit);

/* Array-style form of the constants: a value that holds the index and becomes the constant in the precision
 * of the variable it is assigned to. The Fortran module AMACH_INT makes these an assignment. */
struct orvel_floating_point {
    int32_t n;
};
struct orvel_floating_point AMACH_INT_mp_AMACH(const int32_t* n);
void AMACH_INT_mp_REAL_EQ_FLOATING_POINT(float* x, const struct orvel_floating_point* value);
void AMACH_INT_mp_DOUBLE_EQ_FLOATING_POINT(double* x, const struct orvel_floating_point* value);
float AMACH_INT_mp_S_AMACH(const int32_t* n);
double AMACH_INT_mp_D_AMACH(const int32_t* n);

/* ---- workspace ---------------------------------------------------------------------------------- */

/* Kept for programs that size a workspace pool; there is none, and these do nothing. */
void IWKIN(const int32_t* nsu);
void IWKCIN(const int32_t* nchars);

ORVEL_END

#endif
