/* Factors 100000 systems of order 6 in one call, solves each for eight right-hand sides, beside LAPACK. */
#define _POSIX_C_SOURCE 199309L

#include "kvlm.h"

#include <float.h>
#include <math.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>

enum { order = 6, count = 100000, sides = 8, repetitions = 5 };

/* Strides are in bytes. The right-hand sides of a system lie behind one another. */
enum { element = sizeof(double), row = order * element, matrix = order * row, vector = row };

typedef double Matrix[order][order];
typedef double Vectors[sides][order];

static Matrix a[count], factors[count];
static Vectors b[count], x[count];
static double firstB[count][order], firstX[count][order]; /* of the first right-hand sides alone, packed */
static int pivots[count][order];

static KvlStatus factorAll(void)
{
    return kvlmLUDecomp_ma_64f(a[0][0], matrix, row, element, pivots[0], factors[0][0], matrix, row, element, order,
                               count);
}

/* An array of matrices and an array of vectors (mava): one right-hand side of each system, all in one call. */
static KvlStatus solveFirstSides(void)
{
    return kvlmLUBackSubst_mava_64f(factors[0][0], matrix, row, element, pivots[0], firstB[0], vector, element,
                                    firstX[0], vector, element, order, count);
}

/* One matrix and an array of vectors (mva): all right-hand sides of a system. */
static KvlStatus solveAllSides(void)
{
    KvlStatus status = kvlOk;
    for (int i = 0; i < count && status == kvlOk; ++i)
        status = kvlmLUBackSubst_mva_64f(factors[i][0], row, element, pivots[i], b[i][0], vector, element, x[i][0],
                                         vector, element, order, sides);
    return status;
}

/* To LAPACK, which stores by columns, our matrices are the transposes: it factors these, and solves with 'T'. */
#ifdef HAVE_LAPACK
void dgetrf_(const int *m, const int *n, double *a, const int *lda, int *ipiv, int *info);
void dgetrs_(const char *trans, const int *n, const int *nrhs, const double *a, const int *lda, const int *ipiv,
             double *b, const int *ldb, int *info, size_t transLength);

static KvlStatus factorWithLapack(void)
{
    const int n = order;
    int info = 0;
    memcpy(factors, a, sizeof a);
    for (int i = 0; i < count && info == 0; ++i)
        dgetrf_(&n, &n, factors[i][0], &n, pivots[i], &info);
    return info;
}

static KvlStatus solveWithLapack(void)
{
    const int n = order, nrhs = sides;
    int info = 0;
    memcpy(x, b, sizeof b);
    for (int i = 0; i < count && info == 0; ++i)
        dgetrs_("T", &n, &nrhs, factors[i][0], &n, pivots[i], x[i][0], &n, &info, 1);
    return info;
}
#endif

static double uniform(void)
{
    static unsigned long long state = 1;
    state = state * 6364136223846793005u + 1442695040888963407u;
    return (double)(state >> 11) * 0x1p-52 - 1.0;
}

/* ||b - A*x|| / (||A|| * ||x|| * n * epsilon), in maximum norms. A stable solver keeps it near 1. */
static double residual(double matrix[order][order], const double *rightSide, const double *solution)
{
    double normOfA = 0, normOfX = 0, largest = 0;
    for (int r = 0; r < order; ++r) {
        double rest = rightSide[r], rowSum = 0;
        for (int c = 0; c < order; ++c) {
            rest -= matrix[r][c] * solution[c];
            rowSum += fabs(matrix[r][c]);
        }
        if (!(fabs(rest) <= largest)) /* NaN too */
            largest = fabs(rest);
        normOfA = fmax(normOfA, rowSum);
        normOfX = fmax(normOfX, fabs(solution[r]));
    }
    return largest / (normOfA * normOfX * order * DBL_EPSILON);
}

static double now(void)
{
    struct timespec t;
    clock_gettime(CLOCK_MONOTONIC, &t);
    return (double)t.tv_sec * 1e9 + (double)t.tv_nsec;
}

static double bestTime(KvlStatus (*call)(void))
{
    double best = INFINITY;
    for (int k = 0; k < repetitions; ++k) {
        const double start = now();
        call();
        best = fmin(best, now() - start);
    }
    return best;
}

static int failures;

/* One line of the table: what a call does, how many times. */
static void report(const char *title, KvlStatus (*call)(void), double times)
{
    const KvlStatus status = call(); /* also warms up */
    const double ns = bestTime(call) / times;
    printf("%-62s %8.1f %10.1f", title, ns, 1e3 / ns);
    if (status != kvlOk) {
        printf("   FAILED: status %d", status);
        ++failures;
    }
}

/* With the largest residual of all systems. The answers stand in `solutions`, `perSystem` vectors for each system. */
static void reportSolver(const char *title, KvlStatus (*call)(void), double (*solutions)[order], int perSystem)
{
    double largest = 0;
    memset(solutions, 0xff, sizeof *solutions * perSystem * count); /* NaN: what an earlier solver left is gone */
    report(title, call, (double)count * perSystem);
    for (int i = 0; i < count; ++i)
        for (int k = 0; k < perSystem; ++k) {
            const double found = residual(a[i], b[i][k], solutions[i * perSystem + k]);
            if (!(found <= largest))
                largest = found;
        }
    printf(" %10.2f%s\n", largest, largest < 30 ? "" : "   FAILED: above 30");
    failures += !(largest < 30);
}

int main(void)
{
    for (int i = 0; i < count; ++i) {
        for (int r = 0; r < order; ++r)
            for (int c = 0; c < order; ++c)
                a[i][r][c] = uniform();
        for (int k = 0; k < sides; ++k)
            for (int r = 0; r < order; ++r)
                b[i][k][r] = uniform();
    }
    for (int i = 0; i < count; ++i)
        memcpy(firstB[i], b[i][0], vector);

    printf("%d systems of order %d in double, %d right-hand sides each; one thread, best of %d\n\n", (int)count,
           (int)order, (int)sides, (int)repetitions);
    printf("%-62s %8s %10s %10s\n", "", "ns each", "million/s", "residual");
    report("kvlmLUDecomp_ma_64f: all systems in one call", factorAll, count);
    printf("\n");
    reportSolver("kvlmLUBackSubst_mava_64f: all systems in one call, one side", solveFirstSides, firstX, 1);
    reportSolver("kvlmLUBackSubst_mva_64f: all sides of a system in one call", solveAllSides, x[0], sides);
#ifdef HAVE_LAPACK
    report("dgetrf: a call per system", factorWithLapack, count);
    printf("\n");
    reportSolver("dgetrs: all sides of a system in one call", solveWithLapack, x[0], sides);
#else
    printf("Built without LAPACK: no figures of dgetrf and dgetrs.\n");
#endif
    printf("\nEach is a system factored or a right-hand side solved; the largest residual counts in units of\n"
           "order * epsilon * ||A|| * ||x||.\n");
    return failures ? EXIT_FAILURE : EXIT_SUCCESS;
}
