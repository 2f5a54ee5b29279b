/*
 * How does one photograph move to the next? Around each of 3481 places the six parameters of an affine motion are
 * fitted by least squares, by QR decompositions and by Cholesky decompositions of normal equations, all places in one
 * call (Lucas and Kanade; Shi and Tomasi). The second photograph is the first, bent by a motion that is known. Writes
 * the field as a picture, affine_motion.svg.
 */
#define _POSIX_C_SOURCE 199309L

#include "kvlm.h"

#include <math.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>

enum { width = 256, height = 256, margin = 12, gap = 4, across = (width - 2 * margin) / gap + 1 };
enum { down = (height - 2 * margin) / gap + 1, places = across * down };
/* An equation for every second pixel, 7 x 7 of them, and one for each parameter that keeps its step small. */
enum { reach = 3, side = 2 * reach + 1, pixels = side * side, parameters = 6, rows = pixels + parameters };

/* Strides are in bytes. */
enum { elem = sizeof(float), row = parameters * elem, equations = rows * row, square = parameters * row };

static const float damping = 6;
static const int blurs[] = {40, 40, 40, 40, 10, 10, 10, 10, 2, 2, 2, 2}; /* a round for each, from coarse to fine */
enum { rounds = sizeof blurs / sizeof *blurs };

typedef float Image[height][width];
static Image photo, bent, first, second;
static float jacobian[places][rows][parameters], difference[places][rows], texture[places];
static float normal[places][parameters][parameters], projected[places][parameters];
static float step[places][parameters], buffer[rows];

static int read(const char *name)
{
    static unsigned char grey[height][width];
    int w = 0, h = 0, most = 0, ok;
    FILE *file = fopen(name, "rb");
    if (!file)
        return 0;
    ok = fscanf(file, "P5 %d %d %d", &w, &h, &most) == 3 && w == width && h == height && most == 255 &&
         fgetc(file) == '\n' && fread(grey, 1, sizeof grey, file) == sizeof grey;
    fclose(file);
    for (int k = 0; k < width * height; ++k)
        photo[k / width][k % width] = grey[k / width][k % width];
    return ok;
}

static int inside(int x, int size)
{
    return x < 0 ? 0 : x < size ? x : size - 1;
}

static float sample(Image image, float x, float y)
{
    const int i = (int)floorf(x), j = (int)floorf(y), left = inside(i, width), right = inside(i + 1, width);
    const float *upper = image[inside(j, height)], *lower = image[inside(j + 1, height)], a = x - i, b = y - j;
    return (1 - b) * ((1 - a) * upper[left] + a * upper[right]) + b * ((1 - a) * lower[left] + a * lower[right]);
}

/* The weights 1/4, 1/2, 1/4 in both directions, so many times. */
static void blur(Image from, Image to, int times)
{
    static Image half;
    memcpy(to, from, sizeof(Image));
    for (; times > 0; --times) {
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                half[y][x] = 0.25f * (to[y][inside(x - 1, width)] + 2 * to[y][x] + to[y][inside(x + 1, width)]);
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                to[y][x] = 0.25f * (half[inside(y - 1, height)][x] + 2 * half[y][x] + half[inside(y + 1, height)][x]);
    }
}

/* Where a place of the second photograph was in the first: two eddies and an outward drift. */
static void before(float x, float y, float *oldX, float *oldY)
{
    static const float eddies[][3] = {{80, 95, 0.075f}, {185, 170, -0.065f}};
    float moveX = 0.006f * (x - width / 2), moveY = 0.006f * (y - height / 2);
    for (int e = 0; e < 2; ++e) {
        const float dx = x - eddies[e][0], dy = y - eddies[e][1];
        const float strength = eddies[e][2] * expf(-(dx * dx + dy * dy) / 3600.0f);
        moveX -= strength * dy;
        moveY += strength * dx;
    }
    *oldX = x - moveX;
    *oldY = y - moveY;
}

/* The true motion of a place of the first photograph, by iteration. */
static void truth(float x, float y, float *u, float *v)
{
    *u = *v = 0;
    for (int k = 0; k < 30; ++k) {
        float oldX, oldY;
        before(x + *u, y + *v, &oldX, &oldY);
        *u += x - oldX;
        *v += y - oldY;
    }
}

static int xOf(int place)
{
    return margin + place % across * gap;
}

static int yOf(int place)
{
    return margin + place / across * gap;
}

/* The motion of pixel (i, j) around a place, -1 to 1 from edge to edge, is p0 + p1*i + p2*j and p3 + p4*i + p5*j. The
 * change of brightness that a step of the parameters makes is to undo the difference. */
static void linearise(float (*p)[parameters])
{
    memset(jacobian, 0, sizeof jacobian);
    memset(difference, 0, sizeof difference);
    for (int k = 0; k < places; ++k) {
        float xx = 0, xy = 0, yy = 0;
        for (int n = 0; n < pixels; ++n) {
            const int right = n % side - reach, below = n / side - reach, x = xOf(k) + 2 * right,
                      y = yOf(k) + 2 * below;
            const float i = (float)right / reach, j = (float)below / reach;
            const float newX = x + p[k][0] + p[k][1] * i + p[k][2] * j, newY = y + p[k][3] + p[k][4] * i + p[k][5] * j;
            const float gx = 0.5f * (sample(second, newX + 1, newY) - sample(second, newX - 1, newY));
            const float gy = 0.5f * (sample(second, newX, newY + 1) - sample(second, newX, newY - 1));
            const float equation[] = {gx, gx * i, gx * j, gy, gy * i, gy * j};
            memcpy(jacobian[k][n], equation, sizeof equation);
            difference[k][n] = first[y][x] - sample(second, newX, newY);
            xx += gx * gx;
            xy += gx * gy;
            yy += gy * gy;
        }
        for (int c = 0; c < parameters; ++c)
            jacobian[k][pixels + c][c] = damping;
        /* The smaller eigenvalue: along a line, brightness says nothing. */
        texture[k] = 0.5f * (xx + yy - sqrtf((xx - yy) * (xx - yy) + 4 * xy * xy));
    }
}

static double nanoseconds(void)
{
    struct timespec now;
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return 1e9 * (double)now.tv_sec + (double)now.tv_nsec;
}

static void require(KvlStatus status, const char *what)
{
    if (status != kvlOk) {
        fprintf(stderr, "%s: status %d\n", what, status);
        exit(EXIT_FAILURE);
    }
}

static void solveByQR(void)
{
    float *a = &jacobian[0][0][0];
    require(kvlmQRDecomp_ma_32f(a, equations, row, elem, buffer, a, equations, row, elem, parameters, rows, places),
            "QR decomposition");
    require(kvlmQRBackSubst_mava_32f(a, equations, row, elem, buffer, &difference[0][0], rows * elem, elem, &step[0][0],
                                     row, elem, parameters, rows, places),
            "QR solver");
}

static void solveByCholesky(void)
{
    float *a = &normal[0][0][0];
    require(kvlmCholeskyDecomp_ma_32f(a, square, row, elem, a, square, row, elem, parameters, places),
            "Cholesky decomposition");
    require(kvlmCholeskyBackSubst_mava_32f(a, square, row, elem, &projected[0][0], row, elem, &step[0][0], row, elem,
                                           parameters, places),
            "Cholesky solver");
}

/* The lower triangle is all that the decomposition reads. */
static void formNormalEquations(void)
{
    for (int k = 0; k < places; ++k)
        for (int r = 0; r < parameters; ++r) {
            for (int c = 0; c <= r; ++c) {
                float sum = 0;
                for (int n = 0; n < rows; ++n)
                    sum += jacobian[k][n][r] * jacobian[k][n][c];
                normal[k][r][c] = sum;
            }
            projected[k][r] = 0;
            for (int n = 0; n < rows; ++n)
                projected[k][r] += jacobian[k][n][r] * difference[k][n];
        }
}

static int isTextured(int place)
{
    return texture[place] > 300;
}

static int ascending(const void *x, const void *y)
{
    return (*(const double *)x > *(const double *)y) - (*(const double *)x < *(const double *)y);
}

/* Fits all places and tells the time spent in the library; returns the median error of the motion in pixels where the
 * photograph has texture. */
static double fit(const char *how, void (*solve)(void), void (*prepare)(void), float (*p)[parameters])
{
    static double errors[places];
    double spent = 0;
    int known = 0;
    for (int k = 0; k < rounds; ++k) {
        blur(photo, first, blurs[k]);
        blur(bent, second, blurs[k]);
        linearise(p);
        if (prepare)
            prepare();
        const double start = nanoseconds();
        solve();
        spent += nanoseconds() - start;
        for (int e = 0; e < places; ++e)
            for (int c = 0; c < parameters; ++c)
                p[e][c] += step[e][c];
    }
    for (int k = 0; k < places; ++k)
        if (isTextured(k)) {
            float u, v;
            truth((float)xOf(k), (float)yOf(k), &u, &v);
            errors[known++] = hypot(u - p[k][0], v - p[k][3]);
        }
    qsort(errors, known, sizeof *errors, ascending);
    printf(
        "%-8s %d places, %d rounds: %5.0f ns each. Where there is texture (%d), the median error is %.3f pixels, the "
        "9th decile %.3f\n",
        how, (int)places, (int)rounds, spent / places / rounds, known, errors[known / 2], errors[known * 9 / 10]);
    return known > places / 4 ? errors[known / 2] : INFINITY;
}

/* The photograph in a few greys, each in one stroke. */
static void drawPhoto(FILE *file, Image image)
{
    enum { greys = 10 };
    for (int grey = 0; grey < greys; ++grey) {
        int penX = 0, penY = 0;
        fprintf(file, "<path stroke=\"#%x%x%x\" d=\"M0 .5", grey, grey, grey);
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x) {
                int end = x;
                while (end < width && (int)(image[y][end] * greys / 256) == grey)
                    ++end;
                if (end > x) {
                    fprintf(file, "m%d %dh%d", x - penX, y - penY, end - x);
                    x = penX = end;
                    penY = y;
                }
            }
        fprintf(file, "\"/>\n");
    }
}

/* Arrows in the colour of their direction, three times as long as the motion. */
static void drawArrows(FILE *file, float (*p)[parameters])
{
    enum { hues = 24 };
    for (int hue = 0; hue < hues; ++hue) {
        fprintf(file, "<path stroke=\"hsl(%d,100%%,62%%)\" d=\"", hue * 360 / hues);
        for (int k = 0; k < places; ++k) {
            const float u = 3 * p[k][0], v = 3 * p[k][3], length = hypotf(u, v), head = 2.2f / (length + 0.1f);
            const float turns = atan2f(v, u) / 6.2831853f + 1;
            if (isTextured(k) && (int)(turns * hues + 0.5f) % hues == hue && (k % across + k / across) % 2 == 0)
                fprintf(file, "M%d %dl%.1f %.1fm%.1f %.1fl%.1f %.1fl%.1f %.1f", xOf(k), yOf(k), u, v,
                        head * (-u + 0.6f * v), head * (-v - 0.6f * u), head * (u - 0.6f * v), head * (v + 0.6f * u),
                        head * (-u - 0.6f * v), head * (-v + 0.6f * u));
        }
        fprintf(file, "\"/>\n");
    }
}

static int draw(const char *path, float (*p)[parameters])
{
    FILE *file = fopen(path, "w");
    if (!file)
        return 0;
    fprintf(
        file,
        "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 %d %d\" width=\"%d\" height=\"%d\" fill=\"none\">\n"
        "<g stroke-width=\"1.02\">\n",
        width, height, 3 * width, 3 * height);
    drawPhoto(file, first);
    fprintf(file, "</g>\n<g stroke-width=\".9\" stroke-linecap=\"round\" stroke-linejoin=\"round\">\n");
    drawArrows(file, p);
    fprintf(file, "</g>\n</svg>\n");
    return fclose(file) == 0;
}

int main(int argc, char **argv)
{
    static float byQR[places][parameters], byCholesky[places][parameters];
    const char *source = argc > 1 ? argv[1] : "stairs.pgm", *picture = "affine_motion.svg";
    if (!read(source)) {
        fprintf(stderr, "%s is no grey PGM picture of %d x %d\n", source, (int)width, (int)height);
        return EXIT_FAILURE;
    }
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            float oldX, oldY;
            before((float)x, (float)y, &oldX, &oldY);
            bent[y][x] = rintf(sample(photo, oldX, oldY));
        }
    const double qrError = fit("QR", solveByQR, NULL, byQR);
    const double choleskyError = fit("Cholesky", solveByCholesky, formNormalEquations, byCholesky);
    if (!draw(picture, byQR)) {
        fprintf(stderr, "%s can't be written\n", picture);
        return EXIT_FAILURE;
    }
    printf("The field is in %s\n", picture);
    return qrError < 0.1 && choleskyError < 0.1 ? EXIT_SUCCESS : EXIT_FAILURE;
}
