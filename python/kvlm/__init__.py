"""Linear algebra on stacks of small matrices: numpy.linalg's functions, one call of the kvlm library for a whole stack.

    import kvlm as la

takes the place of numpy.linalg for stacks. Objects are the last axes of an array, (..., n, n) matrices and (..., n)
vectors; leading dimensions are any, and broadcast as in numpy. Orders 3 to 6 are the fast case. Nothing has a unit but
the caller's: elements are numbers, strides bytes.

Types
    float32 (and float16) is computed in float32 if all operands are, all else in float64. float32 and float64 are
    taken as they are, other types are converted once. Complex numbers raise TypeError. Results are plain arrays, of
    subclasses, too; masks are ignored.

Memory
    Arrays at any positive byte strides are read and written where they lie: slices, planes, transposes, fields of
    structures. Copied are: negative strides, zero strides of broadcast_to(), addresses that are no multiple of the
    element's size. `out` gets the results, of several ones as a tuple, in which None may stand for an array that is
    not given; one that overlaps a source, or is of another type, is filled by a copy in the end.

Failures
    numpy.linalg.LinAlgError, as numpy raises it; what is not finite gives NaN where it does so in numpy. With info=True
    nothing is raised: the statuses of all objects, int32, follow the results, 0 for success, and objects that failed
    are NaN. status_text() says what a status means.

Threads
    One, until set_threads(n). The GIL is released while the library works.
"""
import numpy as _np
from numpy.linalg import LinAlgError

from . import _core

__version__ = _core.version
__all__ = [
    "LinAlgError", "add", "cho_factor", "cho_solve", "cholesky", "cross", "det", "eig", "eigh", "eigvals", "eigvalsh",
    "get_threads", "inv", "lstsq", "lu_factor", "lu_solve", "matmul", "matvec", "norm", "qr", "set_threads", "solve",
    "status_text", "trace", "transpose",
]


def matmul(a, b, *, out=None):
    """Products of matrices, (..., m, n) by (..., n, k), as numpy.matmul.

    An a of one dimension is a row, a b of one dimension a column, and the result lacks that dimension.
    """
    return _core.matmul(a, b, out, False)


def matvec(a, b, *, out=None):
    """Matrices (..., m, n) by vectors (..., n), to (..., m)."""
    return _core.matvec(a, b, out, False)


def cross(a, b, *, out=None):
    """Cross products of vectors (..., 3)."""
    return _core.cross(a, b, out, False)


def add(a, b, *, out=None):
    """Sums of matrices (..., m, n). Pays where they lie in structures or are transposed; else numpy.add is as fast."""
    return _core.add(a, b, out, False)


def transpose(a, *, out=None):
    """A copy of matrices (..., m, n) with rows and columns exchanged, (..., n, m); no view, unlike numpy.transpose."""
    return _core.transpose(a, out, False)


def trace(a, *, out=None):
    """Sums of the diagonals of matrices (..., n, n), to (...).

    Of the last two axes, as numpy.linalg.trace, while numpy.trace takes the first two.
    """
    return _core.trace(a, out, False)


def inv(a, *, out=None, info=False):
    """Inverses of matrices (..., n, n), as numpy.linalg.inv. Orders 3 to 6 are by cofactors."""
    return _core.inv(a, out, info)


def det(a, *, out=None, info=False):
    """Determinants of matrices (..., n, n), to (...), as numpy.linalg.det. A singular matrix is no failure."""
    return _core.det(a, out, info)


def solve(a, b, *, out=None, info=False):
    """The x with a @ x = b, a (..., n, n), as numpy.linalg.solve.

    b is vectors (..., n) if it has one dimension, or one less than a; else matrices (..., n, k).
    """
    return _core.solve(a, b, out, info)


def cholesky(a, *, out=None, info=False):
    """L with L @ L.T = a of positive definite matrices (..., n, n), as numpy.linalg.cholesky.

    Only the lower triangle is read; above that of L are zeros.
    """
    return _core.cholesky(a, out, info)


def lu_factor(a, *, out=None, info=False):
    """(lu, piv) of matrices (..., n, n), for lu_solve, in the form of scipy.linalg.lu_factor.

    lu is unit L below the diagonal, U on and above it; int32 piv (..., n) is the row that was exchanged with row i.
    """
    return _core.lu_factor(a, out, info)


def _turned(a):
    a = _np.asarray(a)
    return a.swapaxes(-1, -2) if a.ndim > 1 else a


def _lower(a, UPLO):
    """The array whose lower triangle is that triangle of a."""
    if UPLO in ("L", "l"):
        return a
    if UPLO in ("U", "u"):
        return _turned(a)
    raise ValueError("UPLO argument must be 'L' or 'U'")


def _into(out, result):
    """result, one array or a tuple of some; or those of out, filled with it."""
    if out is None:
        return result
    if isinstance(result, tuple):
        if not isinstance(out, tuple) or len(out) != len(result):
            raise ValueError(f"The 'out' argument must be a tuple of {len(result)} arrays")
        return tuple(map(_into, out, result))
    if isinstance(out, tuple) and len(out) == 1:
        return _into(out[0], result)
    if not isinstance(out, _np.ndarray):
        raise TypeError("'out' must be an array")
    if out.shape != _np.shape(result):
        raise ValueError("The shape of 'out' is not that of the result")
    _np.copyto(out, result)
    return out


def eigvalsh(a, UPLO="L", *, out=None, info=False):
    """Eigenvalues (..., n), ascending, of symmetric matrices (..., n, n), as numpy.linalg.eigvalsh.

    Only the triangle UPLO is read.
    """
    return _core.eigvalsh(_lower(a, UPLO), out, info)


def eigh(a, UPLO="L", *, out=None, info=False):
    """(w, v) of symmetric matrices (..., n, n), as numpy.linalg.eigh: w (..., n) ascending, v[..., :, i] of length 1.

    Only the triangle UPLO is read. `out` is a tuple of two arrays.
    """
    return _core.eigh(_lower(a, UPLO), out, info)


def _complex(re, im):
    w = _np.empty(re.shape, _np.result_type(re, _np.complex64))
    w.real = re
    w.imag = im
    return w


def eigvals(a, *, out=None, info=False):
    """Eigenvalues (..., n) of matrices (..., n, n), as numpy.linalg.eigvals: complex if any value of the stack is.

    A complex `out` takes whatever comes; complex values raise TypeError if it is real.
    """
    re, im, *rest = _core.eigvals(a, None, info)
    w = _into(out, _complex(re, im) if im.any() else re)
    return (w, *rest) if info else w


def eig(a, *, out=None, info=False):
    """(w, v) of matrices (..., n, n), as numpy.linalg.eig: a @ v[..., :, i] = w[..., i] * v[..., :, i], length 1.

    Both are complex if any value of the stack is. `out` is a tuple of two arrays, as in eigvals().
    """
    w, im, v, *rest = _core.eig(a, None, info)
    if im.any():
        z = _np.empty(v.shape, _np.result_type(v, _np.complex64))
        _core.complex_vectors(im, v, (z.real, z.imag), False)
        w, v = _complex(w, im), z
    return (*_into(out, (w, v)), *rest)


def qr(a, mode="reduced", *, out=None, info=False):
    """(q, r) of matrices (..., m, n), as numpy.linalg.qr: q (..., m, k), r (..., k, n), k = min(m, n).

    mode "complete": k = m; "r": r alone. "raw" is not there. Any finite matrix has its factors, a singular one, too.
    `out` is a tuple of two arrays, or r.
    """
    if mode == "r":
        return _core.qr_r(a, out, info)
    if mode == "complete":
        result = _core.qr_complete(a, out, info)
        if result[1].shape[-1] == 0:
            result[0][...] = _np.eye(result[0].shape[-1])
        return result
    if mode != "reduced":
        raise ValueError(f"Unrecognized mode '{mode}'")
    return _core.qr_reduced(a, out, info)


def _vectors(a, b):
    """Whether b is vectors beside matrices of as many dimensions."""
    return _np.ndim(b) == 1 or _np.ndim(b) == _np.ndim(a) - 1


def lstsq(a, b, rcond=None, *, full=True, out=None, info=False):
    """(x, residuals, rank, s) with the least |a @ x - b| for matrices (..., m, n), as numpy.linalg.lstsq of a stack.

    b is vectors (..., m) or matrices (..., m, k), as in solve(). residuals (..., 1) or (..., k) are sums of squares, 0
    where m <= n; rank is (...), s are the singular values (..., n), descending. Singular values up to rcond times the
    largest one count as zero, rcond being max(m, n) times the precision if it is None; -1: that precision alone.

    Full rank and m >= n are the fast case, by QR decompositions; all others are done by numpy, one by one. Most of the
    time goes to s. With full=False x is all that is returned, many times faster; it is for m >= n alone, and only what
    has a zero on the diagonal of R is an error. `out` is a tuple of four arrays, with full=False that of x.
    """
    a = _np.asarray(a)
    b = _np.asarray(b)
    for x, least, word in (a, 2, "two"), (b, 1, "one"):
        if x.ndim < least:
            raise LinAlgError(f"{x.ndim}-dimensional array given. Array must be at least {word}-dimensional")
    isVectors = _vectors(a, b)
    b = b[..., None] if isVectors else b
    m, n = a.shape[-2:]
    if b.shape[-2] != m:
        raise LinAlgError("Incompatible dimensions")
    leading = _np.broadcast_shapes(a.shape[:-2], b.shape[:-2])
    k = b.shape[-1]
    isSingle = all(x.dtype.kind == "f" and x.dtype.itemsize <= 4 for x in (a, b))
    dtype = _np.float32 if isSingle else _np.float64
    a, b = (x.astype(dtype, casting="same_kind", copy=False) for x in (a, b))

    x = _np.empty(leading + (n, k), dtype)
    status = _np.zeros(leading, _np.int32)
    if m >= n:
        for column in range(k):
            more = _core.least_squares(a, b[..., column], x[..., column], True)[1]
            status = _np.where(status == 0, more, status)
    if not full:
        if m < n:
            raise ValueError("lstsq: full=False is for no more columns than rows")
        if not info and status.any():
            raise LinAlgError("Singular matrix")
        x = _into(out, x[..., 0] if isVectors else x)
        return (x, status) if info else x

    s, rank, other = _singular_values(a, rcond)
    isRegular = _np.broadcast_to((rank == n) & (other == 0), leading)
    status = _np.where(status == 0, other, status)
    residuals = _np.zeros(leading + (k,), dtype)
    if m > n:
        difference = matmul(a, x) - b
        _np.einsum("...ij,...ij->...j", difference, difference, out=residuals)
    if m < n or not isRegular.all():
        wide, right = (_np.broadcast_to(y, leading + y.shape[-2:]) for y in (a, b))
        for i in _np.argwhere(~isRegular if m >= n else _np.ones(leading, bool)):
            i = tuple(i)
            if _np.isfinite(wide[i]).all() and _np.isfinite(right[i]).all():
                x[i] = _np.linalg.lstsq(wide[i], right[i], _cutoff(dtype, m, n, rcond))[0]
                status[i] = 0
                difference = wide[i] @ x[i] - right[i]
                residuals[i] = (difference * difference).sum(axis=0) if m > n else 0
    if not info and status.any():
        raise LinAlgError("SVD did not converge in Linear Least Squares")
    result = _into(out, (x[..., 0] if isVectors else x, residuals, rank, s))
    return (*result, status) if info else result


def _cutoff(dtype, m, n, rcond):
    precision = _np.finfo(dtype).eps
    return precision * max(m, n) if rcond is None else precision if rcond == -1 else rcond


def _singular_values(a, rcond):
    """s, descending, the rank and statuses: the eigenvalues of [[0, R'], [R, 0]] are s and -s."""
    r = _core.qr_r(a if a.shape[-2] >= a.shape[-1] else _turned(a), None, True)[0]
    n = r.shape[-1]
    both = _np.zeros(r.shape[:-2] + (2 * n, 2 * n), r.dtype)
    both[..., n:, :n] = r
    w, status = _core.eigvalsh(both, None, True)
    s = _np.maximum(w[..., :n - 1:-1] if n else w, 0)
    cutoff = _cutoff(r.dtype, *a.shape[-2:], rcond)
    return s, (s > cutoff * s[..., :1]).sum(axis=-1), status


def lu_solve(lu_and_piv, b, *, out=None):
    """The x with a @ x = b from lu_factor(a), or scipy.linalg.lu_factor: b (..., n), or (..., n, k), as in solve().

    Singular factors give infinities or NaN.
    """
    lu, piv = lu_and_piv
    return _core.lu_solve(lu, _np.asarray(piv, _np.int32), b, out, False)


def cho_factor(a, lower=False, *, out=None, info=False):
    """(c, lower) of positive definite matrices (..., n, n), for cho_solve, as scipy.linalg.cho_factor.

    c is upper triangular with c.T @ c = a, or lower triangular with c @ c.T = a; its other triangle is zero. Only the
    triangle in question is read. `out` is that of c.
    """
    to = out if lower or out is None else _turned(out)
    c, *rest = cholesky(a if lower else _turned(a), out=to, info=True)
    if not info and rest[0].any():
        raise LinAlgError("Matrix is not positive definite")
    return (c if lower else _turned(c) if out is None else out, lower, *(rest if info else ()))


def cho_solve(c_and_lower, b, *, out=None):
    """The x with a @ x = b from cho_factor(a), or scipy.linalg.cho_factor: b as in solve()."""
    c, lower = c_and_lower
    return _core.cho_solve(c if lower else _turned(c), b, out, False)


def norm(x, ord=None, axis=None, keepdims=False, *, out=None):
    """Norms, as numpy.linalg.norm: of vectors along an axis, of matrices in two axes, of all x if axis is None.

    Euclidean norms of vectors and Frobenius norms of matrices are the library's; all other ones are numpy's.
    """
    x = _np.asarray(x)
    isReal = x.dtype.kind != "c"
    if isReal and isinstance(axis, int) and ord in (None, 2):
        result = _core.length(_np.moveaxis(x, axis, -1), None, False)
    elif isReal and isinstance(axis, tuple) and len(axis) == 2 and ord in (None, "fro", "f") and axis[0] != axis[1]:
        result = _core.frobenius(_np.moveaxis(x, axis, (-2, -1)), None, False)
    else:
        return _into(out, _np.linalg.norm(x, ord, axis, keepdims))
    return _into(out, _np.expand_dims(result, axis) if keepdims else result)


def set_threads(n):
    """Threads that a call may use, for the whole process; 1 at first. Short stacks stay on the caller's thread."""
    if n < 1:
        raise ValueError("There must be at least one thread")
    _core.set_threads(n)


def get_threads():
    """What set_threads() was given, or 1."""
    return _core.get_threads()


def status_text(status):
    """What a status of info=True means, in a sentence."""
    return _core.status_text(status)
