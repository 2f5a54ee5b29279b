"""Results beside numpy's and scipy's: orders, types, leading dimensions, broadcasting, the ways in which arrays lie."""
import itertools

import numpy as np
import pytest
import scipy.linalg

import kvlm as la

TYPES = (np.float32, np.float64)
ORDERS = range(1, 17)
LEADING = ((), (1,), (7,), (2, 3), (2, 1, 5))


def stack(rng, leading, dtype, *shape):
    return rng.standard_normal((*leading, *shape)).astype(dtype)


def regular(rng, leading, n, dtype):
    """Matrices of condition numbers of some n."""
    return stack(rng, leading, dtype, n, n) + (2 * n * np.eye(n)).astype(dtype)


def symmetric(rng, leading, n, dtype):
    a = stack(rng, leading, dtype, n, n)
    return a + a.swapaxes(-1, -2)


def positive(rng, leading, n, dtype):
    a = stack(rng, leading, dtype, n, n)
    return a @ a.swapaxes(-1, -2) + np.eye(n, dtype=dtype)


def close(actual, expected, factor=100, scale=None):
    """Within a multiple of the precision, beside the largest element."""
    actual, expected = np.asarray(actual), np.asarray(expected)
    assert actual.shape == expected.shape
    assert actual.dtype == expected.dtype
    if actual.size:
        tolerance = factor * np.finfo(actual.dtype).eps * (np.abs(expected).max() if scale is None else scale)
        np.testing.assert_allclose(actual, expected, rtol=0, atol=tolerance)


@pytest.fixture
def rng():
    return np.random.default_rng(5)


@pytest.fixture(params=itertools.product(TYPES, ORDERS), ids=lambda p: f"{p[0].__name__}-{p[1]}")
def case(request):
    return request.param


def test_systems(rng, case):
    dtype, n = case
    for leading in LEADING:
        a = regular(rng, leading, n, dtype)
        close(la.inv(a), np.linalg.inv(a))
        close(la.det(a), np.linalg.det(a), 100 * n)
        for turned in (a, a[..., ::-1, :]):  # the second wants other pivots
            for sides in ((1,), (2,), (n,), ()):
                b = stack(rng, leading, dtype, n, *sides)
                close(la.solve(turned, b), np.linalg.solve(turned, b))


def test_positive_definite(rng, case):
    dtype, n = case
    for leading in LEADING:
        a = positive(rng, leading, n, dtype)
        l = la.cholesky(a)
        close(l, np.linalg.cholesky(a), 1000)
        assert not np.triu(l, 1).any()
        b = stack(rng, leading, dtype, n, 3)
        x = np.linalg.solve(a, b)
        for lower in (False, True):
            # Of the other triangle nothing may be read.
            read = np.tril(np.ones((n, n), bool)) if lower else np.triu(np.ones((n, n), bool))
            half = np.where(read, a, dtype(np.nan))
            factors = la.cho_factor(half, lower)
            close(la.cho_solve(factors, b), x, 10000)
            close(la.cho_solve(factors, b[..., 0]), x[..., 0], 10000)
            if leading == ():
                c, _ = scipy.linalg.cho_factor(a, lower)
                triangle = np.tril if lower else np.triu
                close(triangle(factors[0]), triangle(c), 1000)
                close(la.cho_solve((c, lower), b), x, 10000)
                close(scipy.linalg.cho_solve(factors, b), x, 10000)


def test_lu(rng, case):
    dtype, n = case
    for leading in LEADING:
        a = stack(rng, leading, dtype, n, n) + np.eye(n, dtype=dtype)
        b = regular(rng, leading, n, dtype) @ stack(rng, leading, dtype, n, 2)
        lu, piv = la.lu_factor(a)
        assert piv.dtype == np.int32
        for i in np.ndindex(leading):
            expected, pivots = scipy.linalg.lu_factor(a[i])
            np.testing.assert_array_equal(piv[i], pivots)
            close(lu[i], expected, 10000)
        x = la.lu_solve((lu, piv), b)
        norms = np.linalg.norm(a, axis=(-2, -1)).max() * np.abs(x).max()
        close(a @ x, b, 100 * n, norms)
        close(la.lu_solve((lu, piv), b[..., 1]), x[..., 1], 100 * n, np.abs(x).max())


def test_lu_of_one_matrix_for_many_sides(rng):
    a, b = regular(rng, (), 4, np.float64), stack(rng, (50,), np.float64, 4, 2)
    close(la.lu_solve(la.lu_factor(a), b), np.linalg.solve(a, b))
    with pytest.raises(ValueError):
        la.lu_solve((a, np.array([0, 1, 2, 4])), b)


@pytest.mark.parametrize("dtype", TYPES)
def test_qr(rng, dtype):
    shapes = itertools.product(range(1, 9), range(1, 9))
    for (m, n), mode in itertools.product(shapes, ("reduced", "complete")):
        for leading in ((), (5, 3)):
            a = stack(rng, leading, dtype, m, n)
            q, r = la.qr(a, mode)
            expected = np.linalg.qr(a, mode)
            assert (q.shape, r.shape, q.dtype) == (expected[0].shape, expected[1].shape, dtype)
            close(q @ r, a, 30)
            identity = np.eye(q.shape[-1], dtype=dtype)
            close(q.swapaxes(-1, -2) @ q, np.broadcast_to(identity, leading + identity.shape), 30)
            assert not np.tril(r, -1).any()
            close(np.abs(la.qr(a, "r")), np.abs(np.linalg.qr(a, "r")))


@pytest.mark.parametrize("dtype", TYPES)
def test_qr_of_singular_matrices(rng, dtype):
    matrices = [np.zeros((4, 3)), np.ones((4, 3)), np.eye(4)[:, [0, 0, 1]], np.diag([0.0, 1, 0]), np.eye(3) * 1e-30,
                np.ones((3, 3)) * 1e30, np.zeros((2, 3))]
    matrices.append(np.ones((3, 3)) * (1e200 if dtype == np.float64 else 1e30))
    for a in (m.astype(dtype) for m in matrices):
        for mode in ("reduced", "complete"):
            (q, r, status) = la.qr(a, mode, info=True)
            assert status == 0
            close(q @ r, a, 30)
            close(q.T @ q, np.eye(q.shape[1], dtype=dtype), 30)


def test_symmetric_eigenproblems(rng, case):
    dtype, n = case
    for leading in LEADING:
        a = symmetric(rng, leading, n, dtype)
        values = np.linalg.eigvalsh(a)
        for triangle in "LU":
            half = (np.tril if triangle == "L" else np.triu)(a)
            w, v = la.eigh(half, triangle)
            close(w, values)
            close(la.eigvalsh(half, triangle), values)
            close(a @ v, v * w[..., None, :], 100, np.abs(values).max())
            close(v.swapaxes(-1, -2) @ v, np.broadcast_to(np.eye(n, dtype=dtype), a.shape), 30)


def test_general_eigenproblems(rng, case):
    dtype, n = case
    for leading in LEADING:
        for a in (stack(rng, leading, dtype, n, n), symmetric(rng, leading, n, dtype)):
            expected = np.linalg.eigvals(a)
            w, v = la.eig(a)
            assert w.dtype == v.dtype == la.eigvals(a).dtype
            if leading == ():
                assert w.dtype == expected.dtype
            size = np.abs(a).max() * n
            close(a @ v, (v * w[..., None, :]).astype(v.dtype), 100, size)
            close(np.linalg.norm(v, axis=-2), np.ones(w.shape, dtype), 30)
            # In no order that both have; random values may be ill-conditioned.
            ours, theirs = (np.sort(np.abs(x), axis=-1) for x in (la.eigvals(a), expected))
            np.testing.assert_allclose(ours, theirs, rtol=0, atol=size * (3e-3 if dtype == np.float32 else 1e-8))


@pytest.mark.parametrize("dtype", TYPES)
def test_least_squares(rng, dtype):
    for m, n in itertools.product((1, 2, 3, 5, 8), (1, 2, 3, 5)):
        a, b = stack(rng, (4,), dtype, m, n), stack(rng, (4,), dtype, m, 2)
        x, residuals, rank, s = la.lstsq(a, b)
        vector = la.lstsq(a, b[..., 0])
        if m >= n:
            np.testing.assert_array_equal(la.lstsq(a, b, full=False), x)
        for i in range(4):
            X, R, K, S = np.linalg.lstsq(a[i], b[i], None)
            norm = np.abs(X).max() * (S[0] / S[-1]) ** 2
            close(x[i], X, 100, norm)
            close(vector[0][i], X[:, 0], 100, norm)
            close(s[i], S)
            assert rank[i] == K
            if R.size:
                close(residuals[i], R, 100, norm)


def test_least_squares_of_deficient_rank(rng):
    a, b = stack(rng, (5,), np.float64, 6, 3), stack(rng, (5,), np.float64, 6)
    a[2, :, 2] = a[2, :, 0] - a[2, :, 1]
    a[3] = 0
    x, residuals, rank, _ = la.lstsq(a, b)
    assert rank.tolist() == [3, 3, 2, 0, 3]
    for i in range(5):
        np.testing.assert_allclose(x[i], np.linalg.lstsq(a[i], b[i], None)[0], atol=1e-12)
        np.testing.assert_allclose(residuals[i, 0], ((a[i] @ x[i] - b[i]) ** 2).sum(), atol=1e-12)
    with pytest.raises(np.linalg.LinAlgError):
        la.lstsq(a, b, full=False)
    assert (la.lstsq(a, b, full=False, info=True)[1] != 0)[3]
    one = la.lstsq(a[:1], b)  # a single matrix for many sides
    np.testing.assert_allclose(one[0], [np.linalg.lstsq(a[0], y, None)[0] for y in b], atol=1e-12)


@pytest.mark.parametrize("dtype", TYPES)
def test_products(rng, dtype):
    for m, n, k in itertools.product((1, 2, 3, 4, 7), repeat=3):
        for left, right in (((), ()), ((6,), (6,)), ((6,), ()), ((), (6,)), ((2, 1), (1, 3)), ((3,), (2, 3)),
                            ((2, 3), (3,))):
            a, b, x = stack(rng, left, dtype, m, n), stack(rng, right, dtype, n, k), stack(rng, right, dtype, n)
            close(la.matmul(a, b), a @ b)
            close(la.matvec(a, x), (a @ x[..., None])[..., 0])
            c = stack(rng, right, dtype, m, n)
            close(la.add(a, c), a + c)
        close(la.matmul(a, b[0, :, 0]), a @ b[0, :, 0])
        close(la.matmul(a[0, 0, 0], b), a[0, 0, 0] @ b)
        close(la.matmul(a[0, 0, 0], b[0, :, 0]), a[0, 0, 0] @ b[0, :, 0])
        np.testing.assert_array_equal(la.transpose(a), a.swapaxes(-1, -2))
    for left, right in (((), ()), ((6,), (6,)), ((6,), ()), ((), (6,)), ((2, 1), (1, 3))):
        x, y = stack(rng, left, dtype, 3), stack(rng, right, dtype, 3)
        close(la.cross(x, y), np.cross(x, y))


def test_measures(rng, case):
    dtype, n = case
    a = stack(rng, (2, 3), dtype, n, n + 1)
    for axis, keepdims in itertools.product((0, -1, 2, (-2, -1), (0, 2), None), (False, True)):
        for order in (None, 1, 2, np.inf) if not isinstance(axis, tuple) else (None, "fro", 1, 2):
            if axis is not None or order is None:
                close(la.norm(a, order, axis, keepdims), np.linalg.norm(a, order, axis, keepdims))
    square = a[..., :n]
    close(la.trace(square), np.trace(square, axis1=-2, axis2=-1), 100, n)


def lies(name, x):
    """Copies of x that lie otherwise."""
    if name == "fortran":
        return np.asfortranarray(x)
    if name == "planes":
        return np.moveaxis(np.ascontiguousarray(np.moveaxis(x, (-2, -1), (0, 1))), (0, 1), (-2, -1))
    if name == "transposed":
        return x.swapaxes(-1, -2).copy().swapaxes(-1, -2)
    if name == "slice":
        wide = np.full(tuple(2 * k + 1 for k in x.shape), np.nan, x.dtype)
        part = wide[tuple(slice(1, None, 2) for _ in x.shape)]
    elif name == "structure":
        fields = [("number", x.dtype), ("matrix", x.dtype, x.shape[-2:]), ("tail", x.dtype)]
        part = np.zeros(x.shape[:-2], fields)["matrix"]
    elif name == "unaligned":
        part = np.zeros(x.shape[:-2], [("byte", "u1"), ("matrix", x.dtype, x.shape[-2:])])["matrix"]
    elif name == "swapped":
        return x.astype(x.dtype.newbyteorder())
    elif name == "shifted":  # aligned for its type alone
        part = np.empty(x.size + 1, x.dtype)[1:].reshape(x.shape)
    elif name == "reversed":
        part = np.empty_like(x)[::-1, :, ::-1, ::-1]
    part[...] = x
    return part


LAYOUTS = ("fortran", "planes", "transposed", "slice", "structure", "unaligned", "swapped", "shifted", "reversed")


@pytest.mark.parametrize("name", LAYOUTS)
@pytest.mark.parametrize("dtype", TYPES)
def test_layouts(rng, name, dtype):
    for n, leading in itertools.product((2, 3, 4, 6, 9), ((4, 5), (1, 7), (30, 1))):
        a = positive(rng, leading, n, dtype)
        b = stack(rng, leading, dtype, n, n)
        A, B = lies(name, a), lies(name, b)
        before = A.copy()
        functions = {"inv": 1, "det": 1, "cholesky": 1, "solve": 2, "matmul": 2, "add": 2, "trace": 1, "transpose": 1,
                     "eigh": 1, "eigvalsh": 1, "eig": 1, "eigvals": 1, "qr": 1, "lu_factor": 1}
        for function, sources in functions.items():
            call = getattr(la, function)
            results, expected = call(*(A, B)[:sources]), call(*(a, b)[:sources])
            for x, y in zip(*((r if isinstance(r, tuple) else (r,)) for r in (results, expected))):
                if y.dtype.kind == "i":
                    np.testing.assert_array_equal(x, y)
                elif function not in ("eigh", "eig"):  # of vectors the signs are free
                    close(x, y, 1000)
            if function in ("inv", "cholesky", "matmul", "add", "transpose", "solve"):
                to = lies(name, np.zeros_like(a))
                assert call(*(A, B)[:sources], out=to) is to
                close(to.astype(dtype), expected, 1000)
            elif function == "qr":
                close(results[0] @ results[1], a, 1000)
            elif function in ("eigh", "eig"):
                close(a @ results[1], results[1] * results[0][..., None, :], 1000, np.abs(a).max() * n)
        np.testing.assert_array_equal(A, before)


def test_values_to_any_strides(rng):
    """The library has adjacent values alone: objects at the distance of packed ones, elements elsewhere."""
    n, count = 3, 5
    a = symmetric(rng, (count,), n, np.float64)
    w, v = np.empty((n, count, n))[:, :, 0].T, np.empty_like(a)
    la.eigh(a, out=(w, v))
    close(w, np.linalg.eigvalsh(a))
    numbers = np.empty((2, count))[::-1, ::-1]
    la.det(np.stack([a, 2 * a]), out=numbers)
    close(numbers, np.linalg.det(np.stack([a, 2 * a])))


@pytest.mark.parametrize("n", (2, 3, 4, 9))
def test_one_beside_many(rng, n):
    a = positive(rng, (300,), n, np.float64)
    for sides in (n, 1):
        b = stack(rng, (300,), np.float64, n, sides)
        solvers = [la.solve, lambda a, b: la.lu_solve(la.lu_factor(a), b), lambda a, b: la.lstsq(a, b)[0],
                   lambda a, b: la.cho_solve(la.cho_factor(a), b)]
        for x, y in ((a, b[:1]), (a[:1], b), (a[0], b), (a[:, None], b[:1, None]), (a[:7], b[:5, None])):
            expected = np.linalg.solve(x, y)
            for solve in solvers:
                close(solve(x, y), expected, 10000)
        for solve in solvers:
            close(solve(a, b[0, :, 0]), np.linalg.solve(a, b[:1])[..., 0], 10000)


def test_zero_strides(rng):
    for n in (3, 4, 9):
        a, b = regular(rng, (), n, np.float64), regular(rng, (6,), n, np.float64)
        many = np.broadcast_to(a, (6, n, n))
        for f in (la.inv, la.det, la.trace, la.transpose, la.eigvalsh):
            close(f(many), np.broadcast_to(f(a), (6,) + np.shape(f(a))))
        for x, y in ((many, b), (b, many), (many, many), (np.broadcast_to(b[:, :, :1], b.shape), b)):
            close(la.matmul(x, y), x @ y)
            close(la.add(x, y), x + y)
        close(la.solve(many, b), np.linalg.solve(many, b))


def test_stacks_beyond_the_longest_call(rng):
    a, b = regular(rng, (3, 5, 11), 4, np.float64), stack(rng, (1, 5, 11), np.float64, 4)
    calls = [lambda: la.inv(a), lambda: la.det(a[:, ::2]), lambda: la.solve(a, b), lambda: la.matvec(a, b),
             lambda: la.eigvals(a)]
    expected = [call() for call in calls]
    for most in (1, 4, 11):
        la._core.set_most_objects(most)
        try:
            for call, one in zip(calls, expected):
                close(call(), one)
        finally:
            la._core.set_most_objects(2**30)


def test_planes_are_not_copied(rng):
    """The memory of a call is that of its result."""
    import tracemalloc

    a = lies("planes", positive(rng, (10000,), 4, np.float64))
    tracemalloc.start()
    try:
        for call in (la.inv, la.det, la.cholesky, la.eigvalsh, lambda x: la.matmul(x, x)):
            tracemalloc.reset_peak()
            before = tracemalloc.get_traced_memory()[0]
            result = call(a)
            assert tracemalloc.get_traced_memory()[1] - before < result.nbytes + 50000
    finally:
        tracemalloc.stop()
