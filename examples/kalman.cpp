// Thousands of Kalman filters at once: 6 states (place and speed), 3 measurements (place), their elements in planes,
// each filter in a lane; beside the same with Eigen, filter by filter, where it is found.
#include <kvlm/each.hpp>

#include <chrono>
#include <cmath>
#include <cstdio>
#include <memory>
#include <random>
#include <tuple>
#include <vector>

#ifdef HAVE_EIGEN
#include <Eigen/Dense>
#endif

namespace {

constexpr int states = 6, measured = 3, filters = 16384, steps = 50;
constexpr int together = 64; // filters that the caches hold
constexpr float interval = 0.1f, noise = 0.5f, unrest = 0.02f;

constexpr int row = states * 4, plane = together * 4;

/// One matrix for all filters.
struct One {
    float at[states][states] = {};
    auto matrix() const { return std::tuple(&at[0][0], row, 4); }
    auto square() const { return std::tuple_cat(matrix(), std::tuple(states, states)); }
};
/// A matrix for each filter of a block: one run of filters for each position.
struct Matrices {
    auto matrices() { return std::tuple(&at[0][0][0], 4, states * plane, plane); }
    auto squares() { return std::tuple_cat(matrices(), std::tuple(states, states)); }

    alignas(16) float at[states][states][together] = {};
};
struct Vectors {
    auto vectors() { return std::tuple(&at[0][0], 4, plane); }

    alignas(16) float at[states][together] = {};
};
/// The first rows and columns of such matrices, as a view: the same planes.
struct Corners {
    float *base() const { return &of.at[0][0][0]; }
    int count() const { return together; }
    int rows() const { return measured; }
    int columns() const { return measured; }
    float &operator()(int i, int r, int c) const { return of.at[r][c][i]; }

    Matrices &of;
};

template <class Function, class... Parts>
void call(Function *function, Parts... parts)
{
    if (const KvlStatus status = std::apply(function, std::tuple_cat(parts...)))
        std::printf("status %d\n", status);
}

struct Model {
    One motion, growth;           // x = motion*x, with covariance growth
    One observation, uncertainty; // z = observation*x, with covariance uncertainty

    Model()
    {
        for (int k = 0; k < states; ++k) {
            motion.at[k][k] = 1;
            growth.at[k][k] = unrest;
        }
        for (int k = 0; k < measured; ++k) {
            motion.at[k][k + measured] = interval;
            observation.at[k][k] = 1;
            uncertainty.at[k][k] = noise * noise;
        }
    }
};

/// What a step needs in between, for one block after the other.
struct Between {
    Vectors xNew, correction, seen, rest;
    Matrices moved, pH, gain, s, inverse;
    KvlStatus statuses[together];
};

/// The filters of a block.
struct Block {
    Vectors x;
    Matrices p;

    Block()
    {
        for (int k = 0; k < states; ++k)
            for (float &variance : p.at[k][k])
                variance = 10;
    }

    /// One step with the measurements z; how many filters had to be left as predicted.
    int step(const Model &model, Vectors &z, Between &between)
    {
        auto &[xNew, correction, seen, rest, moved, pH, gain, s, inverse, statuses] = between;
        const std::tuple count(together), length(states);
        const std::tuple vectors(states, together);
        const std::tuple square(states, states, together);
        call(kvlmMul_mva_32f, model.motion.square(), x.vectors(), length, xNew.vectors(), count);
        call(kvlmMul_mma_32f, model.motion.square(), p.squares(), moved.matrices(), count);
        call(kvlmMul_mat_32f, moved.squares(), model.motion.square(), p.matrices(), count);
        call(kvlmAdd_mam_32f, p.matrices(), model.growth.matrix(), p.matrices(), square);

        call(kvlmMul_mat_32f, p.squares(), model.observation.square(), pH.matrices(), count);
        call(kvlmMul_mma_32f, model.observation.square(), pH.squares(), s.matrices(), count);
        call(kvlmAdd_mam_32f, s.matrices(), model.uncertainty.matrix(), s.matrices(), square);
        const Corners covariances{s}, inverses{inverse};
        const int failed = kvlm::each::inverse(covariances, inverses, statuses);
        for (int i = 0; failed && i < together; ++i)
            for (int k = 0; statuses[i] != kvlOk && k < measured * measured; ++k)
                inverses(i, k / measured, k % measured) = 0;

        call(kvlmMul_mama_32f, pH.squares(), inverse.squares(), gain.matrices(), count);
        call(kvlmMul_mva_32f, model.observation.square(), xNew.vectors(), length, seen.vectors(), count);
        call(kvlmSub_vava_32f, z.vectors(), seen.vectors(), rest.vectors(), vectors);
        call(kvlmMul_mava_32f, gain.squares(), rest.vectors(), length, correction.vectors(), count);
        call(kvlmAdd_vava_32f, xNew.vectors(), correction.vectors(), x.vectors(), vectors);
        call(kvlmMul_mata_32f, gain.squares(), pH.squares(), moved.matrices(), count);
        call(kvlmSub_mama_32f, p.matrices(), moved.matrices(), p.matrices(), square);
        return failed;
    }
};

#ifdef HAVE_EIGEN
struct Filter {
    Eigen::Matrix<float, states, 1> x = Eigen::Matrix<float, states, 1>::Zero();
    Eigen::Matrix<float, states, states> p = Eigen::Matrix<float, states, states>::Identity() * 10;

    template <class Motion, class Observation>
    void step(const Motion &f, const Observation &h, const Eigen::Matrix<float, measured, 1> &z)
    {
        x = (f * x).eval();
        p = (f * p * f.transpose()).eval();
        p.diagonal().array() += unrest;
        const Eigen::Matrix<float, states, measured> pH = p * h.transpose();
        Eigen::Matrix<float, measured, measured> s = h * pH;
        s.diagonal().array() += noise * noise;
        const Eigen::Matrix<float, states, measured> gain = pH * s.inverse();
        x += gain * (z - h * x);
        p -= gain * pH.transpose();
    }
};
#endif

/// The place that filter i follows, at a time.
float placeOf(int i, int axis, float time)
{
    return std::sin(time * (0.2f + 0.001f * (i % 97)) + 2 * axis) * 10;
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
    std::normal_distribution<float> error(0, noise);
    double ours = 0, theirs = 0, squares = 0;
    int failed = 0;
#ifdef HAVE_EIGEN
    std::vector<Filter> peers(filters);
    const Eigen::Map<const Eigen::Matrix<float, states, states, Eigen::RowMajor>> motion(&model.motion.at[0][0]);
    const Eigen::Map<const Eigen::Matrix<float, measured, states, Eigen::RowMajor>> observation(
        &model.observation.at[0][0]);
#endif
    for (int step = 1; step <= steps; ++step) {
        for (int i = 0; i < filters; ++i)
            for (int axis = 0; axis < measured; ++axis)
                measurements[i / together].at[axis][i % together] = placeOf(i, axis, step * interval) + error(random);
        double start = seconds();
        for (std::size_t k = 0; k < blocks.size(); ++k)
            failed += blocks[k].step(model, measurements[k], *between);
        ours += seconds() - start;
#ifdef HAVE_EIGEN
        start = seconds();
        for (int i = 0; i < filters; ++i) {
            const auto &z = measurements[i / together].at;
            peers[i].step(motion, observation, {z[0][i % together], z[1][i % together], z[2][i % together]});
        }
        theirs += seconds() - start;
#endif
    }
    double largest = 0;
    for (int i = 0; i < filters; ++i)
        for (int axis = 0; axis < measured; ++axis) {
            const float x = blocks[i / together].x.at[axis][i % together];
            squares += std::pow(x - placeOf(i, axis, steps * interval), 2);
#ifdef HAVE_EIGEN
            largest = std::fmax(largest, std::fabs(x - peers[i].x[axis]));
#endif
        }
    std::printf("%d Kalman filters of %d states and %d measurements in float, %d steps\n", filters, states, measured,
                steps);
    std::printf("off by %.2f in the mean, measurements by %.2f; %d steps without an inverse\n",
                std::sqrt(squares / filters / measured), noise, failed);
    std::printf("kvlm, %d filters at once: %7.1f ns each step\n", together, ours / filters / steps * 1e9);
    if (theirs > 0)
        std::printf("Eigen, filter by filter:  %7.1f ns each step, farthest from kvlm by %.1e\n",
                    theirs / filters / steps * 1e9, largest);
    return failed == 0 && squares / filters / measured < noise * noise && largest < 1e-3 ? 0 : 1;
}
