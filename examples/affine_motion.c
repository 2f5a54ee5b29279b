/*
 * Finds the motion between two images: in each of 3072 patches of 8 x 8 pixels six parameters of an affine motion are
 * fitted by least squares, by Cholesky decompositions of normal equations and by QR decompositions, all patches in one
 * call. The images are made here, so the true motion is known. Writes the field as a picture, affine_motion.svg.
 */
#define _POSIX_C_SOURCE 199309L

#include "kvlm.h"

#include <math.h>
#include <stdio.h>
#include <stdlib.h>
#include <time.h>

enum { width = 512, height = 384, side = 8, across = width / side, down = height / side, patches = across * down };
enum { pixels = side * side, parameters = 6, rounds = 5 };

/* Strides are in bytes. The equations of a patch are `pixels` rows of `parameters` floats, normal equations are square.
 */
enum { elem = sizeof(float), row = parameters * elem, equations = pixels * row, square = parameters * row };

static float first[height][width];
static float jacobian[patches][pixels][parameters], difference[patches][pixels];
static float normal[patches][parameters][parameters], projected[patches][parameters];
static float step[patches][parameters], buffer[pixels];

/* The brightness of the first scene, at any place. */
static float scene(float x, float y)
{
    return sinf(0.21f * x + 0.08f * y) + cosf(0.11f * x - 0.23f * y) + sinf(0.16f * y + 2.0f * sinf(0.05f * x)) +
           0.6f * cosf(0.31f * x + 0.19f * y);
}

/* Where a place of the second image was in the first: two eddies and an outward drift. */
static void before(float x, float y, float *oldX, float *oldY)
{
    static const float eddies[][3] = {{150, 140, 0.055f}, {370, 250, -0.045f}};
    float moveX = 0.004f * (x - width / 2), moveY = 0.004f * (y - height / 2);
    for (int e = 0; e < 2; ++e) {
        const float dx = x - eddies[e][0], dy = y - eddies[e][1];
        const float strength = eddies[e][2] * expf(-(dx * dx + dy * dy) / 9000.0f);
        moveX -= strength * dy;
        moveY += strength * dx;
    }
    *oldX = x - moveX;
    *oldY = y - moveY;
}

static float second(float x, float y)
{
    float oldX, oldY;
    before(x, y, &oldX, &oldY);
    return scene(oldX, oldY);
}

/* The true motion of a place of the first image, by iteration. */
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

/* The motion of a pixel (i, j) of a patch, -1 to 1 from edge to edge: p0 + p1*i + p2*j and p3 + p4*i + p5*j. */
static void motion(const float *p, float i, float j, float *u, float *v)
{
    *u = p[0] + p[1] * i + p[2] * j;
    *v = p[3] + p[4] * i + p[5] * j;
}

/* One equation for each pixel: the change of brightness that a step of the parameters makes is to undo the difference.
 */
static void linearise(const float (*p)[parameters])
{
    for (int k = 0; k < patches; ++k)
        for (int n = 0; n < pixels; ++n) {
            const int x = k % across * side + n % side, y = k / across * side + n / side;
            const float i = (n % side - 3.5f) / 3.5f, j = (n / side - 3.5f) / 3.5f, h = 0.5f;
            float u, v;
            motion(p[k], i, j, &u, &v);
            const float newX = x + u, newY = y + v;
            const float gradientX = (second(newX + h, newY) - second(newX - h, newY)) / (2 * h);
            const float gradientY = (second(newX, newY + h) - second(newX, newY - h)) / (2 * h);
            const float equation[] = {gradientX, gradientX * i, gradientX * j, gradientY, gradientY * i, gradientY * j};
            for (int c = 0; c < parameters; ++c)
                jacobian[k][n][c] = equation[c];
            difference[k][n] = first[y][x] - second(newX, newY);
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
    require(kvlmQRDecomp_ma_32f(a, equations, row, elem, buffer, a, equations, row, elem, parameters, pixels, patches),
            "QR decomposition");
    require(kvlmQRBackSubst_mava_32f(a, equations, row, elem, buffer, &difference[0][0], pixels * elem, elem,
                                     &step[0][0], row, elem, parameters, pixels, patches),
            "QR solver");
}

static void solveByCholesky(void)
{
    float *a = &normal[0][0][0];
    require(kvlmCholeskyDecomp_ma_32f(a, square, row, elem, a, square, row, elem, parameters, patches),
            "Cholesky decomposition");
    require(kvlmCholeskyBackSubst_mava_32f(a, square, row, elem, &projected[0][0], row, elem, &step[0][0], row, elem,
                                           parameters, patches),
            "Cholesky solver");
}

/* The lower triangle is all that the decomposition reads. */
static void formNormalEquations(void)
{
    for (int k = 0; k < patches; ++k)
        for (int r = 0; r < parameters; ++r) {
            for (int c = 0; c <= r; ++c) {
                float sum = 0;
                for (int n = 0; n < pixels; ++n)
                    sum += jacobian[k][n][r] * jacobian[k][n][c];
                normal[k][r][c] = sum;
            }
            projected[k][r] = 0;
            for (int n = 0; n < pixels; ++n)
                projected[k][r] += jacobian[k][n][r] * difference[k][n];
        }
}

/* Fits all patches and tells the time spent in the library; returns the mean error of the motion in pixels. */
static double fit(const char *how, void (*solve)(void), void (*prepare)(void), float (*p)[parameters])
{
    double spent = 0, error = 0;
    for (int k = 0; k < rounds; ++k) {
        linearise((const float(*)[parameters])p);
        if (prepare)
            prepare();
        const double start = nanoseconds();
        solve();
        spent += nanoseconds() - start;
        for (int e = 0; e < patches; ++e)
            for (int c = 0; c < parameters; ++c)
                p[e][c] += step[e][c];
    }
    for (int k = 0; k < patches; ++k)
        for (int n = 0; n < pixels; ++n) {
            float u, v, trueU, trueV;
            motion(p[k], (n % side - 3.5f) / 3.5f, (n / side - 3.5f) / 3.5f, &u, &v);
            truth((float)(k % across * side + n % side), (float)(k / across * side + n / side), &trueU, &trueV);
            error += hypot(u - trueU, v - trueV) / ((double)patches * pixels);
        }
    printf("%-8s %d patches, %d rounds: %6.0f ns per patch and round, mean error %.4f pixels\n", how, patches, rounds,
           spent / patches / rounds, error);
    return error;
}

/* Arrows in the colour of their direction on the first image. */
static void draw(const char *path, const float (*p)[parameters])
{
    FILE *file = fopen(path, "w");
    if (!file) {
        perror(path);
        exit(EXIT_FAILURE);
    }
    fprintf(file, "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 %d %d\" width=\"%d\" height=\"%d\">\n",
            width, height, 2 * width, 2 * height);
    for (int grey = 0; grey < 8; ++grey) {
        fprintf(file, "<path fill=\"#%x%x%x\" d=\"", grey, grey, grey);
        for (int k = 0; k < patches; ++k) {
            const int x = k % across * side, y = k / across * side;
            if ((int)(3.6f + first[y + side / 2][x + side / 2]) == grey)
                fprintf(file, "M%d %dh8v8h-8z", x, y);
        }
        fprintf(file, "\"/>\n");
    }
    fprintf(file, "<g stroke-width=\"1.1\" stroke-linecap=\"round\" fill=\"none\">\n");
    for (int k = 0; k < patches; ++k) {
        const float u = p[k][0], v = p[k][3], x = k % across * side + 3.5f, y = k / across * side + 3.5f, size = 4;
        if (k % 2 || k / across % 2)
            continue;
        fprintf(file,
                "<path stroke=\"hsl(%.0f,90%%,60%%)\" d=\"M%.1f %.1fl%.1f %.1fm%.1f %.1fl%.1f %.1fl%.1f %.1f\"/>\n",
                atan2(v, u) * 57.3 + 180, x, y, size * u, size * v, -0.8f * u - 0.5f * v, -0.8f * v + 0.5f * u,
                0.8f * u + 0.5f * v, 0.8f * v - 0.5f * u, -0.8f * u + 0.5f * v, -0.8f * v - 0.5f * u);
    }
    fprintf(file, "</g>\n</svg>\n");
    if (fclose(file) != 0) {
        perror(path);
        exit(EXIT_FAILURE);
    }
}

int main(void)
{
    static float byQR[patches][parameters], byCholesky[patches][parameters];
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            first[y][x] = scene((float)x, (float)y);

    const double qrError = fit("QR", solveByQR, NULL, byQR);
    const double choleskyError = fit("Cholesky", solveByCholesky, formNormalEquations, byCholesky);
    draw("affine_motion.svg", (const float(*)[parameters])byQR);
    puts("The field is in affine_motion.svg.");
    return qrError < 0.05 && choleskyError < 0.05 ? EXIT_SUCCESS : EXIT_FAILURE;
}
