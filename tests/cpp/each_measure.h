// What the tests of kvlm::each share: views, matrices of many kinds, LAPACK, and a table of what was measured.
#ifndef EACH_MEASURE_H
#define EACH_MEASURE_H

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <limits>
#include <map>
#include <random>
#include <string>
#include <vector>

#include <kvlm/each.hpp>

namespace eachtest {

/// Matrices, or vectors of one column, that are packed, or have gaps, or lie by planes.
template <class T>
struct Matrices {
    T *base() const { return start; }
    int count() const { return objects; }
    int rows() const { return height; }
    int columns() const { return width; }
    T &operator()(int i, int r, int c) const { return start[i * object + r * row + c * element]; }

    T *start;
    int objects, height, width;
    int object, row, element;
};
template <class T>
struct Vectors {
    T *base() const { return start; }
    int count() const { return objects; }
    int size() const { return length; }
    T &operator()(int i, int j) const { return start[i * object + j * element]; }

    T *start;
    int objects, length;
    int object, element;
};
/// Says nothing of a base: a view that can't be passed to the C functions.
template <class T>
struct Listed {
    int count() const { return static_cast<int>(list.size()); }
    int rows() const { return height; }
    int columns() const { return width; }
    T &operator()(int i, int r, int c) const { return list[i][r * width + c]; }

    std::vector<T *> list;
    int height, width;
};

/// As the library's own views of lists (2) and tables (1) describe themselves.
struct Strides {
    int object, row, element, shift;
};
template <class T, int D>
struct Described {
    static constexpr int kind = 10, description = D;
    T *const *base() const { return pointers.data(); }
    const Strides &strides() const { return bytes; }
    int count() const { return objects; }
    int rows() const { return height; }
    int columns() const { return width; }
    T &operator()(int i, int r, int c) const
    {
        const int by = bytes.shift + (D == 2 ? r * bytes.row + c * bytes.element : i * bytes.object);
        return *reinterpret_cast<T *>(reinterpret_cast<char *>(pointers[D == 2 ? i : r * width + c]) + by);
    }

    std::vector<T *> pointers;
    Strides bytes;
    int objects, height, width;
};

template <class T>
Matrices<T> packed(std::vector<T> &x, int rows, int columns)
{
    const int positions = rows * columns;
    return {x.data(), static_cast<int>(x.size()) / positions, rows, columns, positions, columns, 1};
}
template <class T>
Vectors<T> packed(std::vector<T> &x, int length)
{
    return {x.data(), static_cast<int>(x.size()) / length, length, length, 1};
}

using Random = std::mt19937;
inline double normal(Random &random)
{
    return std::normal_distribution<double>()(random);
}
inline double uniform(Random &random, double low, double high)
{
    return std::uniform_real_distribution<double>(low, high)(random);
}

/// A kind of matrix: fills a matrix of order n.
struct Kind {
    const char *name;
    std::function<void(Random &, int n, double *a)> fill;
    bool isHard = false;
};

inline void fillRandom(Random &random, int n, double *a)
{
    for (int k = 0; k < n * n; ++k)
        a[k] = normal(random);
}
inline void makeSymmetric(int n, double *a)
{
    for (int r = 0; r < n; ++r)
        for (int c = 0; c < r; ++c)
            a[c * n + r] = a[r * n + c];
}
/// Q*diag(values)*Q', with Q by Gram and Schmidt.
inline void fillWithValues(Random &random, int n, const std::vector<double> &values, double *a)
{
    std::vector<double> q(static_cast<std::size_t>(n) * n);
    fillRandom(random, n, q.data());
    for (int r = 0; r < n; ++r)
        for (int pass = 0; pass < 2; ++pass) {
            for (int k = 0; k < r; ++k) {
                double s = 0;
                for (int c = 0; c < n; ++c)
                    s += q[r * n + c] * q[k * n + c];
                for (int c = 0; c < n; ++c)
                    q[r * n + c] -= s * q[k * n + c];
            }
            double length = 0;
            for (int c = 0; c < n; ++c)
                length += q[r * n + c] * q[r * n + c];
            for (int c = 0; c < n; ++c)
                q[r * n + c] /= std::sqrt(length);
        }
    for (int r = 0; r < n; ++r)
        for (int c = 0; c < n; ++c) {
            a[r * n + c] = 0;
            for (int k = 0; k < n; ++k)
                a[r * n + c] += q[k * n + r] * values[k] * q[k * n + c];
        }
    makeSymmetric(n, a);
}
inline void scaleAll(int n, double *a, double factor)
{
    for (int k = 0; k < n * n; ++k)
        a[k] *= factor;
}

inline void fillToeplitz(Random &random, int n, double *a)
{
    for (int k = 0; k < n; ++k) {
        const double x = normal(random);
        for (int r = k; r < n; ++r)
            a[r * n + r - k] = a[(r - k) * n + r] = x;
    }
}
inline void fillAdjacency(Random &random, int n, double *a)
{
    for (int r = 0; r < n; ++r)
        for (int c = 0; c <= r; ++c)
            a[r * n + c] = r != c && random() % 2;
    makeSymmetric(n, a);
}
/// Powers of ten, up to `range` or down, from the first element to the last.
inline void fillGraded(Random &random, int n, double range, double *a)
{
    fillRandom(random, n, a);
    const double step = uniform(random, -range, range);
    for (int r = 0; r < n; ++r)
        for (int c = 0; c < n; ++c)
            a[r * n + c] *= std::pow(10, step * (r + c) / 4);
}
/// So many of a kind, rounded to T.
template <class T>
std::vector<T> matricesOf(const Kind &kind, Random &random, int n, int count)
{
    std::vector<T> a(static_cast<std::size_t>(count) * n * n);
    std::vector<double> one(n * n);
    for (int i = 0; i < count; ++i) {
        kind.fill(random, n, one.data());
        std::copy(one.begin(), one.end(), a.begin() + static_cast<std::ptrdiff_t>(i) * n * n);
    }
    return a;
}
inline Random randomOf(const Kind &kind, int n)
{
    return Random(static_cast<unsigned>(n) * 7919 + kind.name[0]);
}
/// The larger one, or what is not a number.
inline double worse(double x, double y)
{
    return std::isnan(y) ? y : std::max(x, y);
}

inline void addDiagonal(int n, double *a)
{
    for (int k = 0; k < n; ++k)
        a[k * n + k] += 3;
}
inline const Kind regular{"regular", [](Random &random, int n, double *a) {
                              fillRandom(random, n, a), scaleAll(n, a, 0.3), addDiagonal(n, a);
                          }};
/// Matrices of a kind, with right-hand sides; positive ones are products A'*A.
template <class T>
struct Batch {
    Batch(const Kind &kind, int n, int count, bool isPositive = false)
        : a(static_cast<std::size_t>(count) * n * n), b(static_cast<std::size_t>(count) * n), x(b.size()),
          statuses(count, 1)
    {
        Random random = randomOf(kind, n);
        std::vector<double> one(n * n), other(n * n);
        for (int i = 0; i < count; ++i) {
            kind.fill(random, n, one.data());
            if (isPositive) {
                for (int r = 0; r < n; ++r)
                    for (int c = 0; c < n; ++c) {
                        other[r * n + c] = 0;
                        for (int k = 0; k < n; ++k)
                            other[r * n + c] += one[k * n + r] * one[k * n + c];
                    }
                one.swap(other);
            }
            std::copy(one.begin(), one.end(), a.begin() + static_cast<std::ptrdiff_t>(i) * n * n);
        }
        for (T &value : b)
            value = static_cast<T>(normal(random));
    }
    std::vector<T> a, b, x;
    std::vector<KvlStatus> statuses;
};

extern "C" {
void ssyev_(const char *, const char *, const int *, float *, const int *, float *, float *, const int *, int *);
void dsyev_(const char *, const char *, const int *, double *, const int *, double *, double *, const int *, int *);
void sgeev_(const char *, const char *, const int *, float *, const int *, float *, float *, float *, const int *,
            float *, const int *, float *, const int *, int *);
void dgeev_(const char *, const char *, const int *, double *, const int *, double *, double *, double *, const int *,
            double *, const int *, double *, const int *, int *);
void sgesv_(const int *, const int *, float *, const int *, int *, float *, const int *, int *);
void dgesv_(const int *, const int *, double *, const int *, int *, double *, const int *, int *);
void sgels_(const char *, const int *, const int *, const int *, float *, const int *, float *, const int *, float *,
            const int *, int *);
void dgels_(const char *, const int *, const int *, const int *, double *, const int *, double *, const int *, double *,
            const int *, int *);
}

template <class T>
struct Lapack;
#define EACH_LAPACK(T, prefix)                                                                                         \
    template <>                                                                                                        \
    struct Lapack<T> {                                                                                                 \
        static constexpr auto syev = prefix##syev_;                                                                    \
        static constexpr auto geev = prefix##geev_;                                                                    \
        static constexpr auto gesv = prefix##gesv_;                                                                    \
        static constexpr auto gels = prefix##gels_;                                                                    \
    };
EACH_LAPACK(float, s)
EACH_LAPACK(double, d)
#undef EACH_LAPACK

/// The largest of what was measured, by quantity, kind and order; printed as tables of Markdown.
class Table {
public:
    static Table &all()
    {
        static Table table;
        return table;
    }
    void note(const std::string &title, const std::string &row, int order, double value)
    {
        auto &cells = titles[title];
        if (std::find(rows[title].begin(), rows[title].end(), row) == rows[title].end())
            rows[title].push_back(row);
        double &cell = cells[{row, order}];
        cell = worse(cell, value);
        if (std::find(names.begin(), names.end(), title) == names.end())
            names.push_back(title);
    }
    std::string text() const;

private:
    std::vector<std::string> names;
    std::map<std::string, std::vector<std::string>> rows;
    std::map<std::string, std::map<std::pair<std::string, int>, double>> titles;
};

/// How many times as many matrices as usual: KVLM_ACCURACY_COUNTS.
inline int scaleOfCounts()
{
    const char *const text = std::getenv("KVLM_ACCURACY_COUNTS");
    return text ? std::atoi(text) : 1;
}

template <class T>
constexpr const char *nameOf()
{
    return sizeof(T) == 4 ? "float" : "double";
}
template <class T>
constexpr double epsilon = std::numeric_limits<T>::epsilon();

} // namespace eachtest

#endif
