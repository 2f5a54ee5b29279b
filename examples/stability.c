/*
 * How many of 100000 loops are stable? Reads characteristic polynomials whose coefficients are known to some per cent,
 * varies each 10000 times, and takes the roots as eigenvalues of companion matrices, a call for each polynomial: a loop
 * is stable if no root lies on the right. The criterion of Hurwitz, which asks for no roots, is the judge. Writes
 * stability.svg: all roots in the complex plane.
 */
#define _POSIX_C_SOURCE 199309L

#include "kvlm.h"

#include <math.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>

enum { most = 6, variations = 10000, polynomials = 10, repetitions = 5 };

/* The picture: cells of the plane, the upper half and its mirror image. */
enum { columns = 220, halfRows = 120, cell = 3, levels = 4 };
static const double right = 1.0, scale = 1.0 / 36; /* of the plane: its right border, the size of a cell */

static double matrices[variations * most * most], re[variations * most], im[variations * most];
static double buffer[most * (most + 5)], coefficients[variations][most];
static int stableRoots[halfRows][columns], otherRoots[halfRows][columns];

/* A number from -1 to 1, the same sequence everywhere. */
static double vary(void)
{
    static unsigned state = 2463534242u;
    state ^= state << 13;
    state ^= state >> 17;
    state ^= state << 5;
    return state / 2147483648.0 - 1;
}

/* Companion matrices: ones beside the diagonal, the coefficients in the last row. */
static void makeMatrices(int n, const double *middle, double percent)
{
    memset(matrices, 0, sizeof matrices);
    for (int i = 0; i < variations; ++i) {
        double *a = matrices + (size_t)i * n * n;
        for (int k = 0; k < n; ++k)
            coefficients[i][k] = middle[k] * (1 + percent / 100 * vary());
        for (int r = 0; r + 1 < n; ++r)
            a[r * n + r + 1] = 1;
        for (int c = 0; c < n; ++c)
            a[(n - 1) * n + c] = -coefficients[i][n - 1 - c];
    }
}

/* A call stops at the first matrix without convergence: what is behind it gets a call of its own. */
static int solve(int n)
{
    const int elem = sizeof(double), row = n * elem;
    int first = 0, refused = 0;
    for (int k = 0; k < variations * n; ++k)
        re[k] = NAN;
    while (first < variations) {
        if (kvlmEigenValues_ma_64f(matrices + (size_t)first * n * n, n * row, row, elem, re + first * n, im + first * n,
                                   n, variations - first, buffer) == kvlOk)
            return refused;
        while (!isnan(re[first * n]))
            ++first;
        for (int k = 0; k < n; ++k)
            re[first * n + k] = im[first * n + k] = NAN;
        ++first;
        ++refused;
    }
    return refused;
}

/* By Routh's scheme: stable if and only if all of its first column is positive. */
static int isStableByHurwitz(int n, const double *a)
{
    double above[most + 3] = {0}, below[most + 3] = {0};
    for (int k = 0; k <= n; ++k)
        (k % 2 ? below : above)[k / 2] = k == 0 ? 1 : a[k - 1];
    for (int step = 0; step < n; ++step) {
        double next[most + 3] = {0};
        if (!(below[0] > 0))
            return 0;
        for (int k = 0; k < most + 2; ++k)
            next[k] = above[k + 1] - above[0] / below[0] * below[k + 1];
        memcpy(above, below, sizeof above);
        memcpy(below, next, sizeof below);
    }
    return 1;
}

/* How far the coefficients would have to be off for this number to be a root, relative to their size. */
static double errorOf(int n, const double *a, double x, double y)
{
    double sumRe = 1, sumIm = 0, size = 1;
    for (int k = 0; k < n; ++k) {
        const double nextRe = sumRe * x - sumIm * y + a[k];
        sumIm = sumRe * y + sumIm * x;
        sumRe = nextRe;
        size = size * hypot(x, y) + fabs(a[k]);
    }
    return hypot(sumRe, sumIm) / size;
}

static void mark(double x, double y, int isStable)
{
    const int column = columns - 1 - (int)floor((right - x) / scale), r = (int)(fabs(y) / scale);
    if (column >= 0 && column < columns && r < halfRows)
        ++(isStable ? stableRoots : otherRoots)[r][column];
}

static double now(void)
{
    struct timespec t;
    clock_gettime(CLOCK_MONOTONIC, &t);
    return (double)t.tv_sec * 1e9 + (double)t.tv_nsec;
}

/* Cells with roots of stable loops, or mostly of others, from few (1) to many, as strokes. */
static void drawCells(FILE *file, int ofStable, int level, const char *colour)
{
    fprintf(file, "<path stroke='%s' d='", colour);
    for (int y = -halfRows; y < halfRows; ++y)
        for (int x = 0, begin = -1; x <= columns; ++x) {
            const int r = y < 0 ? -1 - y : y, others = x < columns ? otherRoots[r][x] : 0;
            const int all = x < columns ? stableRoots[r][x] + others : 0;
            const int levelHere = all == 0 ? 0 : all < 4 ? 1 : all < 16 ? 2 : all < 64 ? 3 : 4;
            const int drawn = levelHere == level && (others * 2 < all) == ofStable;
            if (drawn && begin < 0)
                begin = x;
            if (!drawn && begin >= 0) {
                fprintf(file, "M%d %dh%d", begin, y, x - begin);
                begin = -1;
            }
        }
    fprintf(file, "'/>\n");
}

static int draw(const char *name)
{
    static const char *const colours[2][levels] = {{"#f5b7b1", "#ec7063", "#cb4335", "#78281f"},
                                                   {"#aed6f1", "#5dade2", "#2874a6", "#1b3a57"}};
    const double axis = columns - right / scale;
    FILE *file = fopen(name, "w");
    if (!file)
        return 0;
    fprintf(file, "<svg xmlns='http://www.w3.org/2000/svg' width='%d' height='%d' viewBox='0 %d %d %d'>\n",
            columns * cell, 2 * halfRows * cell, -halfRows, columns, 2 * halfRows);
    fprintf(file, "<path fill='#fdfefe' d='M0 %dh%dv%dh-%dz'/>\n<g stroke-width='1' transform='translate(0 .5)'>\n",
            -halfRows, columns, 2 * halfRows, columns);
    for (int ofStable = 0; ofStable < 2; ++ofStable)
        for (int level = 1; level <= levels; ++level)
            drawCells(file, ofStable, level, colours[ofStable][level - 1]);
    fprintf(file, "</g>\n<path stroke='#2c3e50' stroke-width='.5' d='M0 0h%dM%g %dv%d'/>\n", columns, axis, -halfRows,
            2 * halfRows);
    fprintf(file, "<g font-family='sans-serif' font-size='6' fill='#2c3e50'>\n");
    for (int k = -5; k < 1; ++k)
        fprintf(file, "<text x='%g' y='7'>%d</text>\n", axis + k / scale + 1, k);
    for (int k = -3; k <= 3; k += 2)
        fprintf(file, "<text x='%g' y='%g'>%di</text>\n", axis + 2, -k / scale + 2, k);
    fprintf(file, "</g>\n</svg>\n");
    return fclose(file) == 0;
}

int main(int argc, char **argv)
{
    const char *source = argc > 1 ? argv[1] : "loops.txt", *picture = "stability.svg";
    FILE *file = fopen(source, "r");
    double largest = 0;
    int polynomial = 0, wrong = 0, refused = 0, inexact = 0;
    char line[256];

    printf("degree   +-   stable   ns each\n");
    while (file && polynomial < polynomials && fgets(line, sizeof line, file)) {
        double middle[most], percent, best = INFINITY;
        int n, used, stable = 0;
        char *text = line;
        if (line[0] == '#' || sscanf(text, "%d %lf%n", &n, &percent, &used) != 2 || n < 1 || n > most)
            continue;
        for (int k = 0; k < n; ++k) {
            text += used;
            if (sscanf(text, "%lf%n", &middle[k], &used) != 1)
                return fprintf(stderr, "%s: too few coefficients: %s", source, line), EXIT_FAILURE;
        }
        makeMatrices(n, middle, percent);
        for (int k = 0; k < repetitions; ++k) {
            const double start = now();
            const int failed = solve(n);
            best = fmin(best, now() - start);
            refused += k == 0 ? failed : 0;
        }
        for (int i = 0; i < variations; ++i) {
            int isStable = 1;
            for (int k = i * n; k < i * n + n; ++k) {
                const double error = errorOf(n, coefficients[i], re[k], im[k]);
                isStable = isStable && re[k] < 0;
                inexact += !(error < 1e-12);
                largest = fmax(largest, error);
            }
            for (int k = i * n; k < i * n + n; ++k)
                mark(re[k], im[k], isStable);
            stable += isStable;
            wrong += isStable != isStableByHurwitz(n, coefficients[i]);
        }
        printf("%6d %3.0f%% %7.1f%% %9.0f\n", n, percent, 100.0 * stable / variations, best / variations);
        ++polynomial;
    }
    if (file)
        fclose(file);
    if (polynomial < polynomials) {
        fprintf(stderr, "%s has no %d polynomials\n", source, (int)polynomials);
        return EXIT_FAILURE;
    }
    printf("%d loops, %d refused, %d judged otherwise than by Hurwitz' criterion\n", polynomials * variations, refused,
           wrong);
    printf("%d roots are off by more than 1e-12 of the coefficients, the worst by %.1e\n", inexact, largest);
    if (wrong > 10 || refused > 100 || inexact > 100) {
        printf("FAILED: too many\n");
        return EXIT_FAILURE;
    }
    if (!draw(picture)) {
        fprintf(stderr, "%s can't be written\n", picture);
        return EXIT_FAILURE;
    }
    printf("The picture is %s\n", picture);
    return EXIT_SUCCESS;
}
