/*
 * Which way do the lines of a photograph run? Takes its brightness as a relief, sums the products n*n' of the relief's
 * normals around every pixel to a 3 x 3 tensor, and computes the eigenvalues and eigenvectors of all tensors in a
 * call for each row. Writes structure_tensor.ppm: the hue is the direction of the lines, the saturation how much they
 * agree.
 */
#define _POSIX_C_SOURCE 199309L

#include "kvlm.h"

#include <math.h>
#include <stdio.h>
#include <stdlib.h>
#include <time.h>

enum { width = 256, height = 256, pixels = width * height, order = 3, reach = 2, repetitions = 5 };

/* Strides are in bytes. */
enum { elem = sizeof(float), row = order * elem, matrix = order * row };

static const float slope = 8.0f;    /* a step of brightness of this size is a slope of 45 degrees */
static const float floorOf = 0.05f; /* times the identity is added: singular matrices are refused */

static unsigned char photo[height][width];
static float normals[height][width][order], tensors[pixels][order][order];
static float vectors[pixels][order][order], values[pixels][order], buffer[order * order];

static int read(const char *name)
{
    int w = 0, h = 0, most = 0, ok;
    FILE *file = fopen(name, "rb");
    if (!file)
        return 0;
    ok = fscanf(file, "P5 %d %d %d", &w, &h, &most) == 3 && w == width && h == height && most == 255 &&
         fgetc(file) == '\n' && fread(photo, 1, sizeof photo, file) == sizeof photo;
    fclose(file);
    return ok;
}

static int inside(int x, int size)
{
    return x < 0 ? 0 : x < size ? x : size - 1;
}

static float brightness(int x, int y)
{
    return photo[inside(y, height)][inside(x, width)];
}

static void makeTensors(void)
{
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const float dx = 0.5f * (brightness(x + 1, y) - brightness(x - 1, y)) / slope;
            const float dy = 0.5f * (brightness(x, y + 1) - brightness(x, y - 1)) / slope;
            const float length = sqrtf(dx * dx + dy * dy + 1);
            normals[y][x][0] = -dx / length;
            normals[y][x][1] = -dy / length;
            normals[y][x][2] = 1 / length;
        }
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            for (int r = 0; r < order; ++r)
                for (int c = 0; c < order; ++c) {
                    float sum = r == c ? floorOf : 0;
                    for (int v = y - reach; v <= y + reach; ++v)
                        for (int u = x - reach; u <= x + reach; ++u) {
                            const float *n = normals[inside(v, height)][inside(u, width)];
                            sum += n[r] * n[c];
                        }
                    tensors[y * width + x][r][c] = sum;
                }
}

static KvlStatus solve(int first, int count)
{
    return kvlmEigenValuesVectorsSym_ma_32f(tensors[first][0], matrix, row, elem, buffer, vectors[first][0], matrix,
                                            row, elem, values[first], order, count);
}

/*
 * A call stops at the first tensor that it refuses (kvlErrNoConvergence: a few do not converge). So there is a call for
 * each row of pixels, and where one fails, a call for each of its pixels. What is refused is taken for flat.
 */
static int solveAll(void)
{
    int refused = 0;
    for (int y = 0; y < height; ++y) {
        if (solve(y * width, width) == kvlOk)
            continue;
        for (int i = y * width; i < (y + 1) * width; ++i)
            if (solve(i, 1) != kvlOk) {
                for (int k = 0; k < order * order; ++k)
                    tensors[i][k / order][k % order] = vectors[i][k / order][k % order] = k % (order + 1) == 0;
                for (int k = 0; k < order; ++k)
                    values[i][k] = 1;
                ++refused;
            }
    }
    return refused;
}

/* The largest element of T*V - V*D and V'*V - I over all pixels, in units of the size of the tensors. */
static double largestError(void)
{
    double largest = 0;
    for (int i = 0; i < pixels; ++i)
        for (int r = 0; r < order; ++r)
            for (int c = 0; c < order; ++c) {
                double residual = -(double)vectors[i][r][c] * values[i][c], product = r == c ? -1 : 0;
                for (int k = 0; k < order; ++k) {
                    residual += (double)tensors[i][r][k] * vectors[i][k][c];
                    product += (double)vectors[i][k][r] * vectors[i][k][c];
                }
                residual = fabs(residual) / values[i][0];
                if (!(residual <= largest)) /* NaN too */
                    largest = residual;
                if (!(fabs(product) <= largest))
                    largest = fabs(product);
            }
    return largest;
}

static double now(void)
{
    struct timespec t;
    clock_gettime(CLOCK_MONOTONIC, &t);
    return (double)t.tv_sec * 1e9 + (double)t.tv_nsec;
}

/* Red, green or blue (0, 1, 2) of a hue from 0 to 1, full and bright. */
static double channelOf(double hue, int channel)
{
    const double x = fabs(fmod(6 * hue + 6 - 2 * channel + 3, 6) - 3);
    return x < 1 ? 1 : x < 2 ? 2 - x : 0;
}

/* Lines run along the direction in which the normals vary least: the last column of the vectors. */
static int paint(const char *name)
{
    FILE *file = fopen(name, "wb");
    if (!file)
        return 0;
    fprintf(file, "P6 %d %d 255\n", (int)width, (int)height);
    for (int i = 0; i < pixels; ++i) {
        const double x = vectors[i][0][2], y = vectors[i][1][2], variation = values[i][1], rest = values[i][2];
        const double hue = atan2(y, x) / 3.14159265358979 + 1; /* a direction and its opposite are one */
        const double agreement = (variation - rest) / (variation + rest);
        const double light = 0.25 + 0.75 * photo[i / width][i % width] / 255;
        for (int channel = 0; channel < 3; ++channel)
            fputc((int)(255 * (light * (1 - agreement) + agreement * channelOf(fmod(hue, 1), channel))), file);
    }
    return fclose(file) == 0;
}

int main(int argc, char **argv)
{
    const char *source = argc > 1 ? argv[1] : "stairs.pgm", *picture = "structure_tensor.ppm";
    double best = INFINITY, error;
    int lines = 0, refused = 0;

    if (!read(source)) {
        fprintf(stderr, "%s is no grey PGM picture of %d x %d\n", source, (int)width, (int)height);
        return EXIT_FAILURE;
    }
    makeTensors();
    for (int k = 0; k < repetitions; ++k) {
        const double start = now();
        refused += solveAll();
        best = fmin(best, now() - start);
    }
    error = largestError();
    for (int i = 0; i < pixels; ++i)
        lines += values[i][1] > 4 * values[i][2];
    printf("%d tensors of order 3 in float: %.0f ns each, largest error %.1e\n", (int)pixels, best / pixels, error);
    printf("%d refused, %.1f %% of the pixels lie on lines\n", refused, 100.0 * lines / pixels);
    if (!(error < 1e-3) || refused > pixels / 1000) {
        printf("FAILED: too large an error, or too many refused\n");
        return EXIT_FAILURE;
    }
    if (!paint(picture)) {
        fprintf(stderr, "%s can't be written\n", picture);
        return EXIT_FAILURE;
    }
    printf("The picture is %s\n", picture);
    return EXIT_SUCCESS;
}
