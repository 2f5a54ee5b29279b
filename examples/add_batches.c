/* Adds and subtracts 100000 3 x 3 matrices per call in each of the three descriptions, checks and times them. */
#define _POSIX_C_SOURCE 199309L

#include "kvlcore.h"
#include "kvlm.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>

enum { order = 3, positions = order * order, count = 100000, elements = count * positions, repetitions = 15 };

/* Strides and shifts are in bytes. */
enum { elemStride = sizeof(float), rowStride = order * elemStride, objStride = positions * elemStride, noShift = 0 };

/*
 * The same numbers, kept in the three ways that the library can be told of. `a` and `b` are arrays of matrices, `fixed`
 * is the one matrix that is subtracted from every matrix of `a`.
 */
static float fixedMatrix[positions];

/* Standard description: the matrices lie behind one another, row by row. */
static float a[elements], b[elements], result[elements];

/* Pointer description: nine planes, one per element position; a table says where each plane starts. */
static float planesA[elements], planesB[elements], planesResult[elements];
static const float *tableA[positions], *tableB[positions], *tableFixed[positions];
static float *tableResult[positions];

/* List description: every matrix has its own pointer, so the matrices may lie anywhere; here in reverse order. */
static float heapA[elements], heapB[elements], heapResult[elements];
static const float *listA[count], *listB[count];
static float *listResult[count];

static void describe(void)
{
    for (int p = 0; p < positions; ++p) {
        fixedMatrix[p] = 0.25f * (float)(p - 4) + 0.1f;
        tableA[p] = planesA + p * count;
        tableB[p] = planesB + p * count;
        tableFixed[p] = fixedMatrix + p;
        tableResult[p] = planesResult + p * count;
    }
    for (int i = 0; i < count; ++i) {
        const int place = (count - 1 - i) * positions;
        listA[i] = heapA + place;
        listB[i] = heapB + place;
        listResult[i] = heapResult + place;
        for (int p = 0; p < positions; ++p) {
            const int e = i * positions + p;
            a[e] = planesA[p * count + i] = heapA[place + p] = (float)(e % 1009) * 0.37f - 150.0f;
            b[e] = planesB[p * count + i] = heapB[place + p] = (float)(e % 997) * 0.0113f + 3.0f;
        }
    }
}

/*
 * Names: ma is an array of matrices, m one matrix; so _mama adds two arrays, and _mam takes one matrix from each matrix
 * of an array. Each operand brings its own strides; width, height and count stand at the end.
 */

/* Standard: a base pointer, then the way from object to object, from row to row, and from element to element. */
static KvlStatus addStandard(void)
{
    return kvlmAdd_mama_32f(a, objStride, rowStride, elemStride, b, objStride, rowStride, elemStride, result, objStride,
                            rowStride, elemStride, order, order, count);
}

static KvlStatus subStandard(void)
{
    return kvlmSub_mam_32f(a, objStride, rowStride, elemStride, fixedMatrix, rowStride, elemStride, result, objStride,
                           rowStride, elemStride, order, order, count);
}

/*
 * _P: a table of pointers, one per element position of the first object; then a shift added to each of them, and the
 * way from one object to the next. In planes the next object is the next element. The single matrix has a table too.
 */
static KvlStatus addTables(void)
{
    return kvlmAdd_mama_32f_P(tableA, noShift, elemStride, tableB, noShift, elemStride, tableResult, noShift,
                              elemStride, order, order, count);
}

static KvlStatus subTables(void)
{
    return kvlmSub_mam_32f_P(tableA, noShift, elemStride, tableFixed, noShift, tableResult, noShift, elemStride, order,
                             order, count);
}

/*
 * _L: a list of pointers, one per object; then a shift added to each of them, and the strides inside an object. The
 * single matrix needs no list: it is described as in the standard form.
 */
static KvlStatus addLists(void)
{
    return kvlmAdd_mama_32f_L(listA, noShift, rowStride, elemStride, listB, noShift, rowStride, elemStride, listResult,
                              noShift, rowStride, elemStride, order, order, count);
}

static KvlStatus subLists(void)
{
    return kvlmSub_mam_32f_L(listA, noShift, rowStride, elemStride, fixedMatrix, rowStride, elemStride, listResult,
                             noShift, rowStride, elemStride, order, order, count);
}

/* The measure beside them: a plain copy, which no call that reads and writes memory can outrun by much. */
static KvlStatus copyLoop(void)
{
    for (int e = 0; e < elements; ++e)
        result[e] = a[e];
    return kvlOk;
}

/* Where element p of object i of a result lies. */
static const float *inStandard(int i, int p)
{
    return result + i * positions + p;
}
static const float *inTables(int i, int p)
{
    return tableResult[p] + i;
}
static const float *inLists(int i, int p)
{
    return listResult[i] + p;
}

typedef enum { addition, subtraction, copy } Operation;

typedef struct {
    const char *title;
    Operation operation;
    KvlStatus (*call)(void);
    const float *(*element)(int i, int p);
    int arrays; /* how many arrays of matrices go through memory, read or written */
} Row;

static const Row rows[] = {
    {"copy loop", copy, copyLoop, inStandard, 2},
    {"Add_mama_32f    standard", addition, addStandard, inStandard, 3},
    {"Add_mama_32f_P  tables", addition, addTables, inTables, 3},
    {"Add_mama_32f_L  lists", addition, addLists, inLists, 3},
    {"Sub_mam_32f     standard", subtraction, subStandard, inStandard, 2},
    {"Sub_mam_32f_P   tables", subtraction, subTables, inTables, 2},
    {"Sub_mam_32f_L   lists", subtraction, subLists, inLists, 2},
};

/* Compares every element, bit for bit, with what a plain loop computes; returns the number of wrong ones. */
static int countWrong(const Row *row)
{
    int wrong = 0;
    for (int i = 0; i < count; ++i)
        for (int p = 0; p < positions; ++p) {
            const float x = a[i * positions + p];
            float expected = x;
            if (row->operation == addition)
                expected = x + b[i * positions + p];
            else if (row->operation == subtraction)
                expected = x - fixedMatrix[p];
            wrong += memcmp(row->element(i, p), &expected, sizeof expected) != 0;
        }
    return wrong;
}

static double now(void)
{
    struct timespec t;
    clock_gettime(CLOCK_MONOTONIC, &t);
    return (double)t.tv_sec * 1e9 + (double)t.tv_nsec;
}

static int ascending(const void *x, const void *y)
{
    const double l = *(const double *)x, r = *(const double *)y;
    return (l > r) - (l < r);
}

static double medianTime(KvlStatus (*call)(void))
{
    double times[repetitions];
    for (int k = 0; k < repetitions; ++k) {
        const double start = now();
        call();
        times[k] = now() - start;
    }
    qsort(times, repetitions, sizeof times[0], ascending);
    return times[repetitions / 2];
}

int main(void)
{
    const KvlLibraryVersion *version = kvlmGetLibVersion();
    int failures = 0;

    printf("%s, version %s, built %s\n\n", version->libraryName, version->versionText, version->buildDateText);
    describe();
    printf("%d matrices of %d x %d, median of %d calls\n\n", count, order, order, repetitions);
    printf("%-26s %7s %10s %7s   %s\n", "form", "threads", "ns/object", "GB/s", "result");
    for (size_t k = 0; k < sizeof rows / sizeof rows[0]; ++k)
        for (int threads = 1; threads <= (rows[k].operation == copy ? 1 : 2); ++threads) {
            const Row *row = &rows[k];
            kvlSetNumThreads(threads);
            /* A result left by an earlier row must not pass for this one's. All bits set is a NaN. */
            memset(result, 0xff, sizeof result);
            memset(planesResult, 0xff, sizeof planesResult);
            memset(heapResult, 0xff, sizeof heapResult);
            const KvlStatus status = row->call(); /* also warms up */
            const int wrong = countWrong(row);
            const double ns = medianTime(row->call) / count;
            printf("%-26s %7d %10.2f %7.2f   ", row->title, threads, ns, row->arrays * (double)objStride / ns);
            if (status == kvlOk && wrong == 0)
                printf("ok\n");
            else {
                printf("FAILED: status %d, %d of %d elements wrong\n", status, wrong, (int)elements);
                ++failures;
            }
        }
    return failures ? EXIT_FAILURE : EXIT_SUCCESS;
}
