// The lines of a photograph as in structure_tensor.c, in C++: eigenvectors of the tensors of a relief's normals. Writes
// the same picture, structure_tensor_cpp.ppm.
#include "kvlm.hpp"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

constexpr int width = 256, height = 256, pixels = width * height, reach = 2;
constexpr float slope = 8.0f;    // a step of brightness of this size is a slope of 45 degrees
constexpr float floorOf = 0.05f; // times the identity is added: singular matrices are refused

struct Pixel {
    unsigned char brightness;
    float normal[3], tensor[3][3], vectors[3][3];
};
static std::vector<Pixel> photo(pixels);
static std::vector<float> values(pixels * 3);

static Pixel &at(int x, int y)
{
    return photo[std::clamp(y, 0, height - 1) * width + std::clamp(x, 0, width - 1)];
}

static void makeTensors()
{
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const float dx = 0.5f * static_cast<float>(at(x + 1, y).brightness - at(x - 1, y).brightness) / slope;
            const float dy = 0.5f * static_cast<float>(at(x, y + 1).brightness - at(x, y - 1).brightness) / slope;
            const float length = std::sqrt(dx * dx + dy * dy + 1), n[] = {-dx / length, -dy / length, 1 / length};
            std::copy(n, n + 3, at(x, y).normal);
        }
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            for (int k = 0; k < 9; ++k) {
                float sum = k % 4 == 0 ? floorOf : 0;
                for (int v = y - reach; v <= y + reach; ++v)
                    for (int u = x - reach; u <= x + reach; ++u)
                        sum += at(u, v).normal[k / 3] * at(u, v).normal[k % 3];
                at(x, y).tensor[k / 3][k % 3] = sum;
            }
}

// A call stops at the first tensor that it refuses: it is taken for flat, and the next call begins behind it.
static int solveAll()
{
    kvlm::Workspace workspace;
    int refused = 0;
    for (int y = 0; y < height; ++y)
        for (int first = y * width, end = first + width, length = width; first < end;) {
            const auto tensors = kvlm::repeated(kvlm::matrix(photo[first].tensor), sizeof(Pixel), length);
            const auto vectors = kvlm::repeated(kvlm::matrix(photo[first].vectors), sizeof(Pixel), length);
            if (kvlm::eigenvectorsSym(tensors, vectors, &values[first * 3], workspace).ok()) {
                first += length;
            } else if (length > 1) {
                length = 1;
            } else {
                kvlm::check(kvlm::loadIdentity(tensors));
                kvlm::check(kvlm::loadIdentity(vectors));
                std::fill_n(&values[first++ * 3], 3, 1.0f);
                ++refused;
            }
        }
    return refused;
}

// Red, green or blue (0, 1, 2) of a hue from 0 to 1, full and bright.
static double channelOf(double hue, int channel)
{
    return std::clamp(2 - std::fabs(std::fmod(6 * hue + 6 - 2 * channel + 3, 6) - 3), 0.0, 1.0);
}

// Lines run along the direction in which the normals vary least: the last column of the vectors.
static void paint(std::ofstream picture)
{
    picture << "P6 " << width << ' ' << height << " 255\n";
    for (int i = 0; i < pixels; ++i) {
        const double x = photo[i].vectors[0][2], y = photo[i].vectors[1][2], rest = values[3 * i + 2];
        const double hue = std::atan2(y, x) / 3.14159265358979 + 1, variation = values[3 * i + 1];
        const double agreement = (variation - rest) / (variation + rest),
                     light = 0.25 + 0.75 * photo[i].brightness / 255;
        for (int channel = 0; channel < 3; ++channel)
            picture.put(static_cast<char>(
                static_cast<int>(255 * (light * (1 - agreement) + agreement * channelOf(std::fmod(hue, 1), channel)))));
    }
}

int main(int argc, char **argv)
{
    std::ifstream source(argc > 1 ? argv[1] : "stairs.pgm", std::ios::binary);
    std::string magic;
    int w = 0, h = 0, most = 0;
    if (!(source >> magic >> w >> h >> most) || magic != "P5" || w != width || h != height || most != 255)
        return std::fputs("no grey PGM picture of 256 x 256\n", stderr), 1;
    source.get();
    for (Pixel &pixel : photo)
        pixel.brightness = static_cast<unsigned char>(source.get());
    makeTensors();
    const int refused = solveAll();
    std::printf("%d tensors of order 3 in float, %d refused\n", pixels, refused);
    paint(std::ofstream("structure_tensor_cpp.ppm", std::ios::binary));
    return refused > pixels / 1000;
}
