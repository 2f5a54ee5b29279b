// Thousands of Kalman filters at once: 6 states, place and speed, and 6 measurements of both by a receiver that is
// turned. The elements of the filters are in planes, each filter in a lane; beside the same with Eigen, filter by
// filter, where it is found.
#include <kvlm.hpp>
#include <kvlm/each.hpp>

#include <chrono>
#include <cmath>
#include <cstdio>
#include <memory>
#include <random>
#include <vector>

#ifdef HAVE_EIGEN
#include <Eigen/Dense>
#endif

namespace {

constexpr int states = 6, axes = 3, filters = 16384, steps = 50;
constexpr int together = 64; // filters that the caches hold
constexpr float interval = 0.1f, noise = 0.5f, unrest = 0.02f, turn = 0.5f;

/// A matrix, or a vector, for each filter of a block: one run of filters for each position.
struct Matrices {
    auto view() { return kvlm::matricesInPlanes(&at[0][0][0], kvlm::fixed<states>, kvlm::fixed<states>, together); }

    alignas(16) float at[states][states][together] = {};
};
struct Vectors {
    auto view() { return kvlm::vectorsInPlanes(&at[0][0], kvlm::fixed<states>, together); }

    alignas(16) float at[states][together] = {};
};

/// The same for all filters: x = motion*x with covariance growth, z = observation*x with covariance uncertainty.
struct Model {
    float motion[states][states] = {}, growth[states][states] = {};
    float observation[states][states] = {}, uncertainty[states][states] = {};

    Model()
    {
        for (int k = 0; k < states; ++k) {
            motion[k][k] = observation[k][k] = 1;
            growth[k][k] = unrest;
            uncertainty[k][k] = noise * noise;
        }
        for (int k = 0; k < axes; ++k)
            motion[k][k + axes] = interval;
        for (int k = 0; k < states; k += axes) {
            observation[k][k] = observation[k + 1][k + 1] = std::cos(turn);
            observation[k][k + 1] = std::sin(turn);
            observation[k + 1][k] = -std::sin(turn);
        }
    }
};

/// What a step needs in between, for one block after the other.
struct Between {
    Vectors xNew, seen, rest;
    Matrices moved, pH, s, inverse, gain;
    KvlStatus statuses[together];
};

/// The filters of a block.
struct Block {
    Vectors state;
    Matrices covariance;

    Block()
    {
        for (int k = 0; k < states; ++k)
            for (float &variance : covariance.at[k][k])
                variance = 10;
    }

    /// One step with the measurements; how many filters had to be left as predicted.
    int step(const Model &model, Vectors &measurements, Between &between)
    {
        using kvlm::check, kvlm::transposed;
        const auto f = kvlm::matrix(model.motion), h = kvlm::matrix(model.observation);
        const auto x = state.view(), z = measurements.view(), xNew = between.xNew.view(), seen = between.seen.view();
        const auto rest = between.rest.view();
        const auto p = covariance.view(), moved = between.moved.view(), pH = between.pH.view(), s = between.s.view();
        const auto inverse = between.inverse.view(), gain = between.gain.view();

        check(multiply(f, x, xNew));
        check(multiply(f, p, moved));
        check(multiply(moved, transposed(f), p));
        check(add(p, kvlm::matrix(model.growth), p));

        check(multiply(p, transposed(h), pH));
        check(multiply(h, pH, s));
        check(add(s, kvlm::matrix(model.uncertainty), s));
        const int failed = kvlm::each::invert(s, inverse, between.statuses);
        for (int i = 0; failed && i < together; ++i)
            for (int k = 0; between.statuses[i] != kvlOk && k < states * states; ++k)
                inverse(i, k / states, k % states) = 0;

        check(multiply(pH, inverse, gain));
        check(multiply(h, xNew, seen));
        check(subtract(z, seen, rest));
        check(multiply(gain, rest, seen));
        check(add(xNew, seen, x));
        check(multiply(gain, transposed(pH), moved));
        check(subtract(p, moved, p));
        return failed;
    }
};

#ifdef HAVE_EIGEN
using Vector = Eigen::Matrix<float, states, 1>;
using Matrix = Eigen::Matrix<float, states, states, Eigen::RowMajor>;

struct Filter {
    Vector x = Vector::Zero();
    Matrix p = Matrix::Identity() * 10;

    void step(const Matrix &f, const Matrix &h, const Vector &z)
    {
        x = (f * x).eval();
        p = (f * p * f.transpose()).eval();
        p.diagonal().array() += unrest;
        const Matrix pH = p * h.transpose();
        Matrix s = h * pH;
        s.diagonal().array() += noise * noise;
        const Matrix gain = pH * s.inverse();
        x += gain * (z - h * x);
        p -= gain * pH.transpose();
    }
};
#endif

/// What filter i follows: the place, or the speed, at a time.
float truth(int i, int k, float time)
{
    const float rate = 0.2f + 0.001f * (i % 97), angle = time * rate + 2 * (k % axes);
    return k < axes ? 10 * std::sin(angle) : 10 * rate * std::cos(angle);
}
void measure(const Model &model, int i, float time, std::mt19937 &random, Vectors &z)
{
    std::normal_distribution<float> error(0, noise);
    for (int k = 0; k < states; ++k) {
        float seen = error(random);
        for (int j = 0; j < states; ++j)
            seen += model.observation[k][j] * truth(i, j, time);
        z.at[k][i % together] = seen;
    }
}

double seconds()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

} // namespace

int main()
{
    const Model model;
    std::vector<Block> blocks(filters / together);
    const auto between = std::make_unique<Between>();
    std::vector<Vectors> measurements(blocks.size());
    std::mt19937 random(1);
    double ours = 0, theirs = 0, squares = 0;
    int failed = 0;
#ifdef HAVE_EIGEN
    std::vector<Filter> peers(filters);
    const Matrix motion(&model.motion[0][0]), observation(&model.observation[0][0]);
#endif
    for (int step = 1; step <= steps; ++step) {
        for (int i = 0; i < filters; ++i)
            measure(model, i, step * interval, random, measurements[i / together]);
        double start = seconds();
        for (std::size_t k = 0; k < blocks.size(); ++k)
            failed += blocks[k].step(model, measurements[k], *between);
        ours += seconds() - start;
#ifdef HAVE_EIGEN
        start = seconds();
        for (int i = 0; i < filters; ++i) {
            Vector z;
            for (int k = 0; k < states; ++k)
                z[k] = measurements[i / together].at[k][i % together];
            peers[i].step(motion, observation, z);
        }
        theirs += seconds() - start;
#endif
    }
    double largest = 0;
    for (int i = 0; i < filters; ++i)
        for (int k = 0; k < states; ++k) {
            const float x = blocks[i / together].state.at[k][i % together];
            squares += k < axes ? std::pow(x - truth(i, k, steps * interval), 2) : 0;
#ifdef HAVE_EIGEN
            largest = std::fmax(largest, std::fabs(x - peers[i].x[k]));
#endif
        }
    std::printf("%d Kalman filters of %d states and as many measurements in float, %d steps\n", filters, states, steps);
    std::printf("places off by %.2f in the mean, measurements by %.2f; %d steps without an inverse\n",
                std::sqrt(squares / filters / axes), noise, failed);
    std::printf("kvlm, %d filters at once: %7.1f ns each step\n", together, ours / filters / steps * 1e9);
    if (theirs > 0)
        std::printf("Eigen, filter by filter:  %7.1f ns each step, farthest from kvlm by %.1e\n",
                    theirs / filters / steps * 1e9, largest);
    return failed == 0 && squares / filters / axes < noise * noise && largest < 5e-3 ? 0 : 1;
}
