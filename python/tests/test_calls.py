"""What is around the results: types, errors, statuses, empty stacks, out, threads, memory, the README."""
import gc
import pathlib
import pickle
import re
import subprocess
import sys
import threading

import numpy as np
import pytest

import kvlm as la

ROOT = pathlib.Path(__file__).resolve().parents[1]


@pytest.fixture
def rng():
    return np.random.default_rng(7)


@pytest.mark.parametrize("types, result", [
    (("float32", "float32"), "float32"), (("float32", "float64"), "float64"), (("float16", "float32"), "float32"),
    (("int32", "float32"), "float64"), (("int8", "bool"), "float64"), (("longdouble", "float32"), "float64"),
])
def test_types(types, result):
    a, b = (np.eye(3).astype(t) for t in types)
    assert la.matmul(a, b).dtype == la.solve(a, b).dtype == result
    np.testing.assert_array_equal(la.solve(a, b), np.eye(3))


def test_what_is_no_array_of_real_numbers():
    np.testing.assert_array_equal(la.inv([[2, 0], [0, 4]]), [[0.5, 0], [0, 0.25]])
    for wrong in (np.eye(2) * 1j, [["a"]], [[1, 2], [3]]):
        with pytest.raises((TypeError, ValueError)):
            la.inv(wrong)
        with pytest.raises((TypeError, ValueError)):
            la.lstsq(wrong, [1, 2][:len(wrong)])
    np.testing.assert_allclose(la.norm([[3, 4j]], axis=-1), [5])
    assert la.lstsq(np.eye(2, dtype=np.int8), [1, 2])[0].dtype == float


def test_numbers_are_scalars():
    a = np.eye(3, dtype=np.float32)
    for x in (la.det(a), la.trace(a), la.norm(a[0], axis=-1), la.matmul(a[0], a[1])):
        assert type(x) is np.float32
    assert la.det(a, info=True) == (1, 0)


def test_shapes_that_do_not_fit():
    a, wide = np.eye(3), np.ones((2, 3))
    for f in (la.inv, la.det, la.cholesky, la.eigh, la.eigvalsh, la.eig, la.eigvals, la.lu_factor, la.cho_factor):
        with pytest.raises(np.linalg.LinAlgError, match="square"):
            f(wide)
        for options in ({}, {"UPLO": "U"}) if f in (la.eigh, la.eigvalsh) else ({},):
            with pytest.raises(np.linalg.LinAlgError, match="at least two-dimensional"):
                f(a[0], **options)
    with pytest.raises(np.linalg.LinAlgError, match="at least one-dimensional"):
        la.lstsq(a, 1)
    for f, x, y in ((la.solve, a, wide), (la.matmul, wide, wide), (la.matvec, a, np.ones(4)),
                    (la.cross, a[0], wide[0, :2]), (la.add, a, wide),
                    (la.matmul, np.ones((2, 3, 3)), np.ones((4, 3, 3)))):
        with pytest.raises(ValueError):
            f(x, y)
    for wrong in (lambda: la.eigh(a, "X"), lambda: la.qr(a, "raw"), lambda: la.eigh(a, out=a),
                  lambda: la.inv(a, out=np.zeros((3, 4)))):
        with pytest.raises(ValueError):
            wrong()


@pytest.mark.parametrize("n", [2, 4, 8])
def test_failures(rng, n):
    a = rng.standard_normal((300, n, n))
    a = a @ a.swapaxes(-1, -2) + np.eye(n)
    bad = [0, 77, 128, 299]
    expected = np.zeros(300, bool)
    expected[bad] = True
    b = np.ones((300, n))
    a[bad] = 0
    a[bad, 0, 0] = -1
    calls = [(la.inv, a), (la.solve, a, b), (la.solve, a, a), (la.cholesky, a), (la.lu_factor, a), (la.cho_factor, a)]
    for f, *arguments in calls:
        with pytest.raises(np.linalg.LinAlgError):
            f(*arguments)
        result, *_, status = f(*arguments, info=True)
        np.testing.assert_array_equal(status != 0, expected)
        assert status.dtype == np.int32
        np.testing.assert_array_equal(np.isnan(result).all(axis=tuple(range(1, result.ndim))), expected)
        np.testing.assert_array_equal(np.isnan(result).any(axis=tuple(range(1, result.ndim))), expected)
        # A shape of several dimensions, not one stride for all: each status stands where its object does.
        many = [np.moveaxis(x.reshape(3, 50, 2, *x.shape[1:]), 1, 0) for x in arguments]
        *_, status = f(*many, info=True)
        np.testing.assert_array_equal(status != 0, np.moveaxis(expected.reshape(3, 50, 2), 1, 0))
    assert "singular" in la.status_text(int(la.inv(a, info=True)[1][0])).lower()
    assert la.det(a)[0] == 0


@pytest.mark.parametrize("value", [np.nan, np.inf, -np.inf])
@pytest.mark.parametrize("n", [2, 3, 5, 8])
def test_what_is_not_finite(rng, value, n):
    a = rng.standard_normal((9, n, n)) + 3 * np.eye(n)
    a = a @ a.swapaxes(-1, -2)
    b = rng.standard_normal((9, n))
    good = np.arange(9) != 4
    a[4, 1, 0] = value
    for f, *arguments in ((la.inv, a), (la.solve, a, b), (la.det, a), (la.lu_factor, a), (la.qr, a)):
        result = f(*arguments)  # NaN, as in numpy
        first = result[0] if isinstance(result, tuple) else result
        np.testing.assert_array_equal(np.isfinite(first).reshape(9, -1).all(axis=1), good)
    for x in la.qr(a) + la.qr(a.swapaxes(-1, -2)):
        assert np.isnan(x[4]).all()
    for f in (la.eigh, la.eigvalsh, la.eig, la.eigvals, la.cholesky):
        with pytest.raises(np.linalg.LinAlgError):
            f(a)
        first, *_, status = f(a, info=True)
        np.testing.assert_array_equal(status == 0, good)
        np.testing.assert_array_equal(np.isfinite(first).reshape(9, -1).all(axis=1), good)
    with pytest.raises(np.linalg.LinAlgError):
        la.lstsq(a, b)
    assert ((la.lstsq(a, b, info=True)[-1] == 0) == good).all()


@pytest.mark.parametrize("dtype, size", [
    (np.float32, 1e-30), (np.float32, 1e30), (np.float64, 1e-200), (np.float64, 1e200),
])
def test_sizes_of_elements(rng, dtype, size):
    a = (rng.standard_normal((20, 4, 4)) + 4 * np.eye(4)).astype(dtype)
    huge, scale = a * dtype(size), dtype(size)
    tolerance = 100 * np.finfo(dtype).eps
    for n in (2, 4):
        inverse = la.inv(a[:, :n, :n])
        ours = la.inv(huge[:, :n, :n]) * scale
        np.testing.assert_allclose(ours, inverse, rtol=0, atol=tolerance * np.abs(inverse).max())
        for b in (a[:, :n, 0], a[:, :n]):
            x = la.solve(a[:, :n, :n], b)
            ours = la.solve(huge[:, :n, :n], b) * scale
            np.testing.assert_allclose(ours, x, rtol=0, atol=tolerance * np.abs(x).max())
    s = a @ a.swapaxes(-1, -2)
    values = la.eigvalsh(s)
    np.testing.assert_allclose(la.eigvalsh(s * scale) / scale, values, rtol=0, atol=tolerance * values.max())
    q, r = la.qr(huge)
    np.testing.assert_allclose(q @ (r / scale), a, rtol=0, atol=tolerance * 10)


def test_solutions_at_the_limits_of_the_type(rng):
    """Reciprocals of the pivots overflow, solutions don't; then a solution does, on one of two sides."""
    a = ((rng.standard_normal((20, 4, 4)) + 4 * np.eye(4)) * 1e-39).astype(np.float32)
    b = (rng.standard_normal((20, 4, 2)) * 1e-39).astype(np.float32)
    expected = np.linalg.solve(a.astype(float), b.astype(float))
    np.testing.assert_allclose(la.solve(a, b), expected, rtol=0, atol=1e-5)
    np.testing.assert_allclose(la.solve(a, b[..., 1]), expected[..., 1], rtol=0, atol=1e-5)
    small = np.eye(3, dtype=np.float32) * np.float32(1e-3)
    x, status = la.solve(small, np.array([[1e38, 1]] * 3, np.float32), info=True)
    assert status != 0 and np.isnan(x).all()


EMPTY = [
    ((0, 3, 3), (0, 3, 2)), ((4, 0, 0), (4, 0, 2)), ((2, 0, 3, 3), (2, 0, 3, 2)), ((0, 0), (0, 2)),
    ((4, 3, 3), (4, 3, 0)),
]


@pytest.mark.parametrize("shape, sides", EMPTY)
def test_empty_stacks(shape, sides):
    a, b = np.ones(shape) + (np.eye(shape[-1]) if shape[-1] else 0), np.ones(sides)
    for f in ("inv", "det", "cholesky", "eigh", "eigvalsh", "eig", "eigvals", "solve", "matmul", "qr", "trace", "norm"):
        if f == "qr" and 0 in shape[:-2]:
            continue  # numpy has none of empty stacks
        arguments = (a, b) if f in ("solve", "matmul") else (a,)
        options = {"axis": (-2, -1)} if f == "norm" else {}
        others = {"matmul": np.matmul, "trace": lambda x: np.trace(x, axis1=-2, axis2=-1)}
        theirs = others.get(f) or getattr(np.linalg, f)
        ours = getattr(la, f)(*arguments, **options)
        for x, y in zip(*(r if isinstance(r, tuple) else (r,) for r in (ours, theirs(*arguments, **options)))):
            assert np.shape(x) == np.shape(y), f
            if f not in ("eigh", "eig", "qr"):
                np.testing.assert_allclose(x, y, rtol=1e-13)
    np.testing.assert_array_equal(la.matmul(np.ones((3, 2, 0)), np.ones((3, 0, 4))), np.zeros((3, 2, 4)))
    q, r = la.qr(np.ones((2, 3, 0), np.float32), "complete")
    assert (q == np.eye(3)).all() and r.shape == (2, 3, 0) and q.dtype == np.float32


def test_out_of_other_types_and_read_only(rng):
    a = rng.standard_normal((10, 3, 3)).astype(np.float32)
    out = np.empty((10, 3, 3))
    assert la.inv(a, out=out) is out
    np.testing.assert_array_equal(out, la.inv(a))
    with pytest.raises(TypeError):
        la.inv(a, out=np.empty((10, 3, 3), int))
    with pytest.raises(TypeError):
        la.inv(a, out=[1])
    read_only = a.copy()
    read_only.flags.writeable = False
    np.testing.assert_array_equal(la.inv(read_only), la.inv(a))
    with pytest.raises(ValueError, match="read-only"):
        la.inv(a, out=read_only)


def test_out_of_several_results(rng):
    a = rng.standard_normal((6, 4, 3))
    square = a[:, :3] @ a[:, :3].swapaxes(-1, -2) + np.eye(3)
    turned = a[:, :3] - a[:, :3].swapaxes(-1, -2)  # of imaginary eigenvalues
    calls = [
        lambda out: la.qr(a, out=out), lambda out: la.qr(a, "complete", out=out), lambda out: la.qr(a, "r", out=out),
        lambda out: la.qr(a[..., :0], "complete", out=out), lambda out: la.eig(square, out=out),
        lambda out: la.eig(turned, out=out), lambda out: la.eigvals(turned, out=out),
        lambda out: la.lstsq(a, a[..., 0], out=out), lambda out: la.lstsq(a, a[..., 0], full=False, out=out),
        lambda out: la.cho_factor(square, out=out and out[0])[:1], lambda out: la.norm(a, axis=-1, out=out),
        lambda out: la.norm(a, 1, axis=(-2, -1), keepdims=True, out=out), lambda out: la.lu_factor(square, out=out),
    ]
    for call in calls:
        expected = call(None)
        if isinstance(expected, tuple):
            out = tuple(np.full((*x.shape, 2), 7, x.dtype)[..., 0] for x in expected)
            assert all(x is y for x, y in zip(call(out), out))
            partly = call((out[0], *(None,) * (len(out) - 1)))
            for x, y, z in zip(out, expected, partly):
                np.testing.assert_array_equal(x, y)
                np.testing.assert_array_equal(z, y)
        else:
            out = np.full((*expected.shape, 2), 7, expected.dtype)[..., 0]
            assert call(out) is out and call((out,)) is out
            np.testing.assert_array_equal(out, expected)
    wide = np.empty((6, 3), complex)
    np.testing.assert_array_equal(la.eigvals(square, out=wide), la.eigvals(square))
    with pytest.raises(TypeError):
        la.eigvals(turned, out=np.empty((6, 3)))
    for wrong in (wide, (wide,), (wide, wide)):
        with pytest.raises(ValueError):
            la.eig(square, out=wrong)
    with pytest.raises(ValueError, match="read-only"):
        la.eigvals(square, out=np.broadcast_to(wide, wide.shape))


@pytest.mark.parametrize("f, sources", [
    ("inv", 1), ("cholesky", 1), ("solve", 2), ("matmul", 2), ("add", 2), ("transpose", 1),
])
def test_out_that_overlaps(rng, f, sources):
    call = getattr(la, f)
    for n in (3, 4, 7):
        memory = rng.standard_normal((60, n, n)) + 5 * np.eye(n)
        memory = memory @ memory.swapaxes(-1, -2)
        places = [slice(10, 40), slice(9, 39), slice(11, 41), slice(39, 9, -1)]
        views = [lambda m, p=p: m[p] for p in places]
        views += [lambda m: m[10:40].swapaxes(-1, -2),
                  lambda m: m.reshape(-1)[10 * n * n + 1:40 * n * n + 1].reshape(30, n, n)]
        for view in views:
            work = memory.copy()
            a = work[10:40]
            b = work[12:42]
            expected = call(*(a.copy(), b.copy())[:sources])
            call(*(a, b)[:sources], out=view(work))
            np.testing.assert_array_equal(view(work), expected)
    w, v = np.empty((30, 7)), work[10:40]
    expected = la.eigh(work[10:40].copy())
    la.eigh(work[10:40], out=(w, v))
    np.testing.assert_array_equal(w, expected[0])
    np.testing.assert_array_equal(v, expected[1])
    both = np.empty((30, 8, 7))
    la.eigh(memory[10:40], out=(both[:, 0], both[:, :7]))  # results that overlap are each whole: the last one stands
    np.testing.assert_array_equal(both[:, :7], la.eigh(memory[10:40])[1])


def test_threads(rng):
    a = rng.standard_normal((20000, 4, 4)) + 4 * np.eye(4)
    a[12345] = 0
    with pytest.raises(ValueError):
        la.set_threads(0)
    calls = (lambda: la.inv(a, info=True), lambda: la.eigvals(a), lambda: la.matmul(a, a), lambda: la.qr(a),
             lambda: la.solve(a, a, info=True))
    expected = [call() for call in calls]
    assert la.get_threads() == 1
    la.set_threads(3)
    try:
        for call, one in zip(calls, expected):
            for x, y in zip(*((r if isinstance(r, tuple) else (r,)) for r in (call(), one))):
                np.testing.assert_array_equal(x, y)
        with pytest.raises(np.linalg.LinAlgError):
            la.inv(a)
    finally:
        la.set_threads(1)


def test_the_gil_is_released(rng):
    a = rng.standard_normal((200000, 6, 6))
    ticks = []
    thread = threading.Thread(target=lambda: la.eigvals(a))
    thread.start()
    while thread.is_alive():
        ticks.append(0)
        thread.join(0.001)
    assert len(ticks) > 20


def test_no_leaks(rng):
    a = rng.standard_normal((2, 3, 3)) + 3 * np.eye(3)
    bad = np.zeros((2, 3, 3))
    out = np.empty_like(a)

    def calls(n):
        for _ in range(n):
            la.inv(a)
            la.inv(a[::-1], out=out)
            la.inv(a, out=a[:, ::-1])
            la.eigh(a, info=True)
            la.matmul([[1.0]], [[2.0]])
            try:
                la.inv(bad)
            except np.linalg.LinAlgError:
                pass
            try:
                la.solve(a, out[:, :2])
            except ValueError:
                pass

    def resident():
        gc.collect()
        return int(pathlib.Path("/proc/self/statm").read_text().split()[1]) * 4096

    calls(1000)
    before, references = resident(), sys.getrefcount(np.dtype(float))
    calls(16000)  # more than 10^5 of them; an object of 100 bytes in each would be 1.6 MB in all
    assert resident() - before < 1_000_000
    assert abs(sys.getrefcount(np.dtype(float)) - references) < 100


def test_help_names_everything():
    command = [sys.executable, "-c", "import kvlm; help(kvlm)"]
    text = subprocess.run(command, capture_output=True, text=True, check=True).stdout
    for name in la.__all__:
        assert name in text
        assert getattr(la, name).__doc__
        assert pickle.loads(pickle.dumps(getattr(la, name))) is getattr(la, name)


def test_readme():
    """The first block of code in the README runs, and does what its comments say."""
    block = re.search(r"```python\n(.*?)```", (ROOT / "README.md").read_text(), re.S).group(1)
    names = {}
    exec(block, names)
    for line in block.splitlines():
        shape = re.match(r"(\w+)(?:, (\w+))? = .*# \((.*?)\)", line)
        if shape:
            assert names[shape.group(1)].shape == tuple(int(k) for k in shape.group(3).split(",") if k)
