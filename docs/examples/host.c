/* docs/examples/host.c - examples of what a host program sets */
#include <math.h>
#include <orvel/orvel.h>
#include <pthread.h>
#include <setjmp.h>
#include <stdio.h>
#include <string.h>

static const float pole = -2;

/* example orvel_bind_unit */
static void to_log(void* log, int32_t unit, const char* text, size_t length)
{
    ++*(int*)log;
    printf("unit %d, %d characters: %.20s...\n", unit, (int)length, text + 2);
}

static void log_messages(void)
{
    int messages = 0;
    orvel_bind_unit(6, to_log, &messages);
    const float far = -3.0000002f;
    GAMMA(&far); /* posts a warning */
    orvel_bind_unit(6, NULL, NULL);
    printf("%d message\n", messages);
}
/* end */

/* example orvel_set_stop_handler, orvel_reset */
static jmp_buf mark;

static void jump(void* context, int32_t type, int32_t code)
{
    (void)context;
    printf("a stop: severity %d, code %d\n", type, code);
    longjmp(mark, 1);
}

static void survive(void)
{
    const int32_t quiet = 0, fatal = 5, stop = 1;
    ERSET(&fatal, &quiet, &stop);
    orvel_set_stop_handler(jump, NULL);
    if (setjmp(mark) == 0)
        GAMMA(&pole);
    else
        orvel_reset(); /* the stack of routines is back at the user's level */
    orvel_set_stop_handler(NULL, NULL);
    puts("going on");
}
/* end */

/* example orvel_set_stop_text_handler, orvel_set_stop_status */
static void tell(void* context, int32_t type, int32_t code, const char* routine, const char* text)
{
    (void)context, (void)type;
    printf("%s %d: %s\n", routine, code, text);
    longjmp(mark, 1); /* would it return, the process would end, with the status 3 */
}

static void survive_with_text(void)
{
    orvel_set_stop_status(3);
    orvel_set_stop_text_handler(tell, NULL);
    if (setjmp(mark) == 0)
        GAMMA(&pole);
    else
        orvel_reset();
    orvel_set_stop_text_handler(NULL, NULL);
}
/* end */

/* example orvel_begin_quiet, orvel_end_quiet */
static void errors_as_values(void)
{
    struct orvel_outcome outcome;
    orvel_begin_quiet(&outcome);
    GAMMA(&pole); /* would print and stop */
    orvel_end_quiet(&outcome);
    printf("%s, severity %d, code %d\n%s\n", outcome.routine, outcome.severity, outcome.code, outcome.text);
}
/* end */

/* example orvel_with_context */
static int32_t power(void* exponent, double x, double* fx)
{
    *fx = pow(x, *(double*)exponent);
    return 0;
}

static void integrate(void* result, orvel_function f, orvel_dfunction df)
{
    const double a = 0, b = 1, absolute = 0, relative = 1e-10;
    double error;
    (void)f;
    DQDAGS(df, &a, &b, &absolute, &relative, result, &error);
}

static void with_context(void)
{
    double exponent = 3, integral;
    orvel_with_context(power, &exponent, integrate, &integral);
    printf("%.6f\n", integral);
}
/* end */

/* example orvel_call_with_context */
static int32_t impatient(void* calls, double x, double* fx)
{
    *fx = x;
    return ++*(int*)calls == 10 ? 77 : 0; /* 77 ends the routine */
}

static void call_with_context(void)
{
    const double a = 0, b = 1, absolute = 0, relative = 1e-10;
    double result, error;
    int calls = 0;
    const orvel_address arguments[] = {&a, &b, &absolute, &relative, &result, &error};
    const int32_t status = orvel_call_with_context(impatient, &calls, (orvel_routine)DQDAGS, 0, 6, arguments);
    printf("status %d after %d calls\n", status, calls);
}
/* end */

/* example orvel_set_thread_defaults */
static void* worker(void* unused)
{
    const int32_t last_call = 1;
    const float value = GAMMA(&pole); /* prints nothing and does not stop */
    printf("%f, code %d\n", (double)value, N1RCD(&last_call));
    return unused;
}

static void threads(void)
{
    pthread_t thread;
    orvel_set_thread_defaults(0, 0, 0); /* for threads that start to use the library later */
    pthread_create(&thread, NULL, worker, NULL);
    pthread_join(thread, NULL);
}
/* end */

int main(void)
{
    puts("-- orvel_bind_unit");
    log_messages();
    puts("-- orvel_set_stop_handler, orvel_reset");
    survive();
    puts("-- orvel_set_stop_text_handler, orvel_set_stop_status");
    survive_with_text();
    puts("-- orvel_begin_quiet, orvel_end_quiet");
    errors_as_values();
    puts("-- orvel_with_context");
    with_context();
    puts("-- orvel_call_with_context");
    call_with_context();
    puts("-- orvel_set_thread_defaults");
    threads();
    puts("-- orvel_use_level, orvel_level, orvel_version");
    /* example orvel_use_level, orvel_level, orvel_version */
    printf("unknown level: %d\n", orvel_use_level("x86-64-v9"));
    printf("best level: %d, it has a name: %d\n", orvel_use_level(NULL), strlen(orvel_level()) > 0);
    printf("the library is as old as the headers: %d\n", strcmp(orvel_version(), ORVEL_VERSION) == 0);
    /* end */
    return 0;
}
