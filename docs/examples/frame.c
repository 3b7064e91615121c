/* docs/examples/frame.c - examples of the frame: errors of the library and of one's own, constants, units */
#include <orvel/orvel.h>
#include <stdio.h>
#include <string.h>

static const int32_t every = 0, keep = -1, off = 0, on = 1, initial = 2, last_call = 1, here = 0;

/* example E1PSH, E1POP, E1MES, E1STI */
/* A routine of one's own with an error of its own. */
static int triangle(int n)
{
    const int32_t terminal = 5, code = 1, first = 1, value = n;
    const char *name = "TRIANGLE", *text = "N = %(I1).  It must not be negative.";
    E1PSH(name, strlen(name));
    if (n < 0) {
        E1STI(&first, &value);
        E1MES(&terminal, &code, text, strlen(text));
    }
    const int result = n < 0 ? 0 : n * (n + 1) / 2;
    E1POP(name, strlen(name));
    return result;
}
/* end */

static void outcomes(void)
{
    puts("-- ERSET, N1RTY, N1RCD");
    fflush(stdout);
    /* example ERSET, N1RTY, N1RCD */
    const float pole = -2;
    ERSET(&every, &off, &off); /* print nothing, never stop */
    const float value = GAMMA(&pole);
    printf("%f, severity %d, code %d\n", (double)value, N1RTY(&last_call), N1RCD(&last_call));
    ERSET(&every, &initial, &off); /* print as at the start */
    GAMMA(&pole);
    /* end */

    puts("-- IERCD");
    /* example IERCD */
    const float far = -200;
    GAMMA(&far); /* underflows: an alert, which is not printed */
    printf("code %d\n", IERCD());
    /* end */

    puts("-- E1PSH, E1POP, E1MES, E1STI");
    printf("%d\n", triangle(4));
    fflush(stdout);
    triangle(-1);

    puts("-- E1STL, E1STA");
    fflush(stdout);
    /* example E1STL, E1STA */
    const int32_t warning = 3, code = 2, first = 1, second = 2, four = 4;
    const char *name = "READER", *text = "The file %(L1) ends after %(A2).";
    E1PSH(name, strlen(name));
    E1STL(&first, "points.txt", strlen("points.txt"));
    E1STA(&second, &four, "linear", strlen("linear")); /* its first four characters */
    E1MES(&warning, &code, text, strlen(text));
    E1POP(name, strlen(name));
    /* end */
}

static void switches(void)
{
    puts("-- E1POS");
    /* example E1POS */
    const int32_t of_warnings = -3;
    int32_t prints, stops;
    E1POS(&of_warnings, &prints, &stops);
    printf("warnings print %d, stop %d\n", prints, stops);
    /* end */

    puts("-- E1USR");
    /* example E1USR */
    /* What a callback does: errors below this level are those of a call by the user. */
    E1PSH("SOLVER", 6);
    E1USR("ON", 2);
    const float far = -200;
    GAMMA(&far);
    printf("code inside %d\n", N1RCD(&last_call));
    E1USR("OFF", 3);
    E1POP("SOLVER", 6);
    /* end */

    puts("-- E1PRT, E1UCS");
    fflush(stdout);
    /* example E1PRT, E1UCS */
    const int32_t alert = 2, code = 9;
    const char* alert_text = "An alert is not printed, unless on demand.";
    const double before = ERCOM3.checksum;
    E1PSH("PROBE", 5);
    E1MES(&alert, &code, alert_text, strlen(alert_text));
    E1PRT();
    printf("folded into the checksum: %d\n", ERCOM3.checksum != before);
    E1UCS();
    E1POP("PROBE", 5);
    /* end */

    puts("-- E1INIT, N1RNOF, N1RGB, N1THRD");
    /* example E1INIT, N1RNOF, N1RGB, N1THRD */
    const int32_t count = 1, take = 2;
    E1INIT(); /* every routine of the frame does this by itself */
    N1RNOF(&count);
    N1RNOF(&count);
    printf("counted %d, prompt errors stop %d, %d\n", N1RNOF(&take), N1RGB(), N1THRD());
    /* end */

    puts("-- E1MEM");
    /* example E1MEM */
    const int32_t slot = 3;
    int32_t value = 42;
    char name[7] = "LAPACK";
    E1MEM("SET", &slot, &value, name, 3, 6);
    value = 0;
    printf("%d", E1MEM("GET", &slot, &value, name, 3, 6));
    printf(" %d %s\n", value, name);
    /* end */
}

static void constants(void)
{
    puts("-- AMACH, DMACH, IMACH");
    /* example AMACH, DMACH, IMACH */
    const int32_t largest = 2, spacing = 4, integer = 5;
    printf("%.6e %.6e\n", (double)AMACH(&largest), DMACH(&spacing));
    printf("%d\n", IMACH(&integer));
    /* end */

    puts("-- UMACH");
    /* example UMACH */
    const int32_t errors = 3, set_errors = -3;
    int32_t unit, terminal = 0, output = 6;
    UMACH(&set_errors, &terminal); /* messages to standard error */
    UMACH(&errors, &unit);
    printf("unit %d\n", unit);
    UMACH(&set_errors, &output);
    /* end */

    puts("-- IWKIN");
    /* example IWKIN */
    const int32_t size = 100000;
    IWKIN(&size); /* of old programs; there is no pool */
    /* end */

    puts("-- S_ERROR_POST");
    fflush(stdout);
    /* example S_ERROR_POST */
    /* Record 1 of messages.daf, which is not there: the packet posts an error of its own. */
    const struct orvel_s_epack packet[7] = {{1, 0}, {3, 0}, {1, 0}, {-1, 0}, {-1, 0}, {0, 0}, {0, 0}};
    const int32_t length = 7;
    S_ERROR_POST(packet, &length);
    printf("severity %d, code %d\n", N1RTY(&last_call), N1RCD(&last_call));
    /* end */
}

int main(void)
{
    outcomes();
    switches();
    constants();
    return N1RTY(&here) > 0 && keep + on;
}
