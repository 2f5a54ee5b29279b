/* Draws a Wavefront OBJ model in a list of poses, in perspective, as an SVG picture.
   usage: draw_model MODEL.obj POSES.txt PICTURE.svg
   A pose is a line of five numbers: turn about the y axis and tilt about the z axis in degrees, then the place x y z.
 */
#include "kvlm.h"

#include <math.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

enum { maxVertices = 4000, maxFaces = 4000, maxCorners = 8, maxPoses = 50, width = 900, height = 420 };
enum { elem = sizeof(float), row = 4 * elem, matrix = 4 * row, point = 3 * elem, homogeneous = 4 * elem };

typedef float Matrix[4][4];
typedef struct {
    int corners, corner[maxCorners];
} Face;
typedef struct {
    int pose, face;
    float depth, light;
} Piece;

static float vertices[maxVertices][4]; /* x y z 1 */
static Face faces[maxFaces];
static Matrix turns[maxPoses], tilts[maxPoses], places[maxPoses], turned[maxPoses], poses[maxPoses], views[maxPoses];
static float world[maxPoses][maxVertices][4], picture[maxPoses][maxVertices][3];
static Piece pieces[maxPoses * maxFaces];
static int vertexCount, faceCount, poseCount;

static void fail(const char *what)
{
    fprintf(stderr, "draw_model: %s\n", what);
    exit(1);
}

static FILE *opened(const char *name, const char *mode)
{
    FILE *file = fopen(name, mode);
    if (!file)
        fail(name);
    return file;
}

static void readModel(const char *name)
{
    FILE *file = opened(name, "r");
    char line[500];
    while (fgets(line, sizeof line, file)) {
        float v[4] = {0, 0, 0, 1};
        if (sscanf(line, "v %f %f %f", &v[0], &v[1], &v[2]) == 3) {
            if (vertexCount == maxVertices)
                fail("too many vertices");
            memcpy(vertices[vertexCount++], v, sizeof v);
        } else if (line[0] == 'f' && line[1] == ' ') {
            if (faceCount == maxFaces)
                fail("too many faces");
            Face *face = &faces[faceCount++];
            for (char *word = strtok(line + 1, " \r\n"); word; word = strtok(NULL, " \r\n")) {
                const int number = atoi(word); /* what follows a slash is texture and normal */
                if (number < 1 || number > vertexCount)
                    fail("a face has no such vertex");
                if (face->corners == maxCorners)
                    fail("a face has too many corners");
                face->corner[face->corners++] = number - 1;
            }
            if (face->corners < 3)
                fail("a face has too few corners");
        }
    }
    fclose(file);
}

static void setIdentity(Matrix m)
{
    for (int r = 0; r < 4; r++)
        for (int c = 0; c < 4; c++)
            m[r][c] = r == c;
}

/* A rotation by `degrees` in the plane of two axes. */
static void setRotation(Matrix m, double degrees, int from, int to)
{
    const double angle = degrees * 3.14159265358979323846 / 180;
    setIdentity(m);
    m[from][from] = m[to][to] = (float)cos(angle);
    m[from][to] = (float)-sin(angle);
    m[to][from] = (float)sin(angle);
}

static void readPoses(const char *name)
{
    FILE *file = opened(name, "r");
    char line[500];
    float turn, tilt, x, y, z;
    while (fgets(line, sizeof line, file))
        if (sscanf(line, "%f %f %f %f %f", &turn, &tilt, &x, &y, &z) == 5) {
            if (poseCount == maxPoses)
                fail("too many poses");
            setRotation(turns[poseCount], turn, 2, 0);
            setRotation(tilts[poseCount], tilt, 0, 1);
            setIdentity(places[poseCount]);
            places[poseCount][0][3] = x;
            places[poseCount][1][3] = y;
            places[poseCount][2][3] = z;
            poseCount++;
        }
    fclose(file);
}

/* From the world to the picture: back from the camera, a little from above, and the last row that makes perspective. */
static void setCamera(Matrix m)
{
    const float tilt = 0.30f, away = 22, zoom = 900;
    const float c = cosf(tilt), s = sinf(tilt);
    const Matrix camera = {{zoom, -width / 2 * s, -width / 2 * c, width / 2 * away},
                           {0, -zoom * c - height / 2 * s, zoom * s - height / 2 * c, height / 2 * away + zoom * 0.4f},
                           {0, s, c, -away},
                           {0, -s, -c, away}};
    memcpy(m, camera, sizeof camera);
}

static void check(KvlStatus status)
{
    if (status != kvlOk)
        fail(status == kvlErrZeroDivisor ? "a vertex lies in the plane of the camera" : "a call failed");
}

/* All poses in three calls, all vertices of a pose in one call each. */
static void transform(const Matrix camera)
{
    check(kvlmMul_mama_32f(turns[0][0], matrix, row, elem, 4, 4, tilts[0][0], matrix, row, elem, 4, 4, turned[0][0],
                           matrix, row, elem, poseCount));
    check(kvlmMul_mama_32f(places[0][0], matrix, row, elem, 4, 4, turned[0][0], matrix, row, elem, 4, 4, poses[0][0],
                           matrix, row, elem, poseCount));
    check(kvlmMul_mma_32f(camera[0], row, elem, 4, 4, poses[0][0], matrix, row, elem, 4, 4, views[0][0], matrix, row,
                          elem, poseCount));
    for (int p = 0; p < poseCount; p++) {
        check(kvlmMul_mva_32f(poses[p][0], row, elem, 4, 4, vertices[0], homogeneous, elem, 4, world[p][0], homogeneous,
                              elem, vertexCount));
        /* The first three elements of each vertex are its point. */
        check(kvlmAffineTransform3DH_mva_32f(views[p][0], row, elem, vertices[0], homogeneous, elem, picture[p][0],
                                             point, elem, vertexCount));
    }
}

/* The largest distance in the picture, in pixels, from the same transformation in double precision. */
static double largestError(const Matrix camera)
{
    double worst = 0;
    for (int p = 0; p < poseCount; p++)
        for (int v = 0; v < vertexCount; v++) {
            const float *const chain[] = {tilts[p][0], turns[p][0], places[p][0], camera[0]};
            double x[4] = {vertices[v][0], vertices[v][1], vertices[v][2], 1};
            for (int step = 0; step < 4; step++) {
                double y[4] = {0, 0, 0, 0};
                for (int r = 0; r < 4; r++)
                    for (int k = 0; k < 4; k++)
                        y[r] += chain[step][4 * r + k] * x[k];
                memcpy(x, y, sizeof x);
            }
            const double error = hypot(x[0] / x[3] - picture[p][v][0], x[1] / x[3] - picture[p][v][1]);
            worst = !(error <= worst) ? error : worst; /* NaN too */
        }
    return worst;
}

static int byDepth(const void *a, const void *b)
{
    const float x = ((const Piece *)a)->depth, y = ((const Piece *)b)->depth;
    return (x < y) - (x > y);
}

/* The faces that look at the camera, each with its distance and its light. */
static int collectPieces(const Matrix camera)
{
    int count = 0;
    for (int p = 0; p < poseCount; p++)
        for (int f = 0; f < faceCount; f++) {
            const int *const corner = faces[f].corner, last = faces[f].corners - 1;
            const float *const a = world[p][corner[0]], *const b = world[p][corner[1]],
                               *const c = world[p][corner[last]];
            const float *const A = picture[p][corner[0]], *const B = picture[p][corner[1]],
                               *const C = picture[p][corner[last]];
            float n[3], depth = 0;
            for (int k = 0; k < 3; k++) {
                const int i = (k + 1) % 3, j = (k + 2) % 3;
                n[k] = (b[i] - a[i]) * (c[j] - a[j]) - (b[j] - a[j]) * (c[i] - a[i]);
            }
            const float length = sqrtf(n[0] * n[0] + n[1] * n[1] + n[2] * n[2]);
            if ((B[0] - A[0]) * (C[1] - A[1]) > (B[1] - A[1]) * (C[0] - A[0]) || length == 0)
                continue;
            for (int k = 0; k <= last; k++)
                for (int j = 0; j < 4; j++)
                    depth += camera[3][j] * world[p][corner[k]][j];
            const float light = (0.45f * n[0] + 0.7f * n[1] + 0.55f * n[2]) / length;
            pieces[count].pose = p;
            pieces[count].face = f;
            pieces[count].depth = depth / (float)(last + 1);
            pieces[count++].light = light > 0 ? light : 0;
        }
    return count;
}

static void draw(const char *name, const Matrix camera)
{
    FILE *svg = opened(name, "w");
    const int count = collectPieces(camera);
    qsort(pieces, (size_t)count, sizeof pieces[0], byDepth);
    fprintf(svg, "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 %d %d'>\n", width, height);
    fprintf(svg, "<rect width='100%%' height='100%%' fill='#dfe7ee'/>\n<g stroke-width='0.4'>\n");
    for (int k = 0; k < count; k++) {
        const Face *const face = &faces[pieces[k].face];
        const int shade = 60 + (int)(185 * pieces[k].light), red = pieces[k].pose % 2 ? shade : shade * 6 / 10;
        fprintf(svg, "<path fill='#%02x%02x%02x' stroke='#%02x%02x%02x' d='", red, shade * 8 / 10, shade * 7 / 10, red,
                shade * 8 / 10, shade * 7 / 10);
        for (int c = 0; c < face->corners; c++)
            fprintf(svg, "%c%.1f %.1f", c ? 'L' : 'M', picture[pieces[k].pose][face->corner[c]][0],
                    picture[pieces[k].pose][face->corner[c]][1]);
        fprintf(svg, "z'/>\n");
    }
    fprintf(svg, "</g>\n</svg>\n");
    fclose(svg);
}

int main(int argc, char **argv)
{
    Matrix camera;
    if (argc != 4)
        fail("usage: draw_model MODEL.obj POSES.txt PICTURE.svg");
    readModel(argv[1]);
    readPoses(argv[2]);
    if (vertexCount == 0 || faceCount == 0 || poseCount == 0)
        fail("nothing to draw");
    setCamera(camera);
    transform(camera);
    draw(argv[3], camera);
    const double error = largestError(camera);
    printf("%d vertices in %d poses, within %.1g pixels of double precision\n", vertexCount, poseCount, error);
    return error < 0.01 ? 0 : 1;
}
