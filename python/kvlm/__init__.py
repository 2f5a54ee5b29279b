"""Linear algebra on stacks of small matrices: numpy.linalg's functions, one call of the kvlm library for a whole stack.

    import kvlm as la

takes the place of numpy.linalg for stacks. Objects are the last axes of an array, (..., n, n) matrices and (..., n)
vectors; leading dimensions are any, and broadcast as in numpy. Orders 3 to 6 are the fast case. Nothing has a unit but
the caller's: elements are numbers, strides bytes.

Types
    float32 (and float16) is computed in float32 if all operands are, all else in float64. float32 and float64 are
    taken as they are, other types are converted once. Complex numbers raise TypeError.

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
from ._core import (add, cholesky, cross, det, get_threads, inv, lu_factor, matmul, matvec, set_threads, solve,
                    status_text, trace, transpose)

__all__ = [
    "LinAlgError", "add", "cho_factor", "cho_solve", "cholesky", "cross", "det", "eig", "eigh", "eigvals", "eigvalsh",
    "get_threads", "inv", "lstsq", "lu_factor", "lu_solve", "matmul", "matvec", "norm", "qr", "set_threads", "solve",
    "status_text", "trace", "transpose",
]


def _turned(a):
    return _np.asarray(a).swapaxes(-1, -2)


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
    return _core._eigvalsh(_lower(a, UPLO), out=out, info=info)


def eigh(a, UPLO="L", *, out=None, info=False):
    """(w, v) of symmetric matrices (..., n, n), as numpy.linalg.eigh: w (..., n) ascending, v[..., :, i] of length 1.

    Only the triangle UPLO is read. `out` is a tuple of two arrays.
    """
    return _core._eigh(_lower(a, UPLO), out=out, info=info)


def _complex(re, im):
    w = _np.empty(re.shape, _np.result_type(re, _np.complex64))
    w.real = re
    w.imag = im
    return w


def eigvals(a, *, out=None, info=False):
    """Eigenvalues (..., n) of matrices (..., n, n), as numpy.linalg.eigvals: complex if any value of the stack is.

    A complex `out` takes whatever comes; complex values raise TypeError if it is real.
    """
    re, im, *rest = _core._eigvals(a, info=info)
    w = _into(out, _complex(re, im) if im.any() else re)
    return (w, *rest) if info else w


def eig(a, *, out=None, info=False):
    """(w, v) of matrices (..., n, n), as numpy.linalg.eig: a @ v[..., :, i] = w[..., i] * v[..., :, i], length 1.

    Both are complex if any value of the stack is. `out` is a tuple of two arrays, as in eigvals().
    """
    w, im, v, *rest = _core._eig(a, info=info)
    if im.any():
        z = _np.empty(v.shape, _np.result_type(v, _np.complex64))
        _core._complex_vectors(im, v, out=(z.real, z.imag))
        w, v = _complex(w, im), z
    return (*_into(out, (w, v)), *rest)


def qr(a, mode="reduced", *, out=None, info=False):
    """(q, r) of matrices (..., m, n), as numpy.linalg.qr: q (..., m, k), r (..., k, n), k = min(m, n).

    mode "complete": k = m; "r": r alone. "raw" is not there. Any finite matrix has its factors, a singular one, too.
    `out` is a tuple of two arrays, or r.
    """
    if mode == "r":
        return _core._qr_r(a, out=out, info=info)
    if mode == "complete":
        a = _np.asarray(a)
        if a.shape[-1:] == (0,):
            q = _np.broadcast_to(_np.eye(a.shape[-2]), a.shape[:-1] + a.shape[-2:-1]).copy()
            return (*_into(out, (q, a.astype(q.dtype))), *([_np.zeros(a.shape[:-2], _np.int32)] if info else []))
        return _core._qr_complete(a, out=out, info=info)
    if mode != "reduced":
        raise ValueError(f"Unrecognized mode '{mode}'")
    return _core._qr_reduced(a, out=out, info=info)


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
    if a.ndim < 2:
        raise LinAlgError(f"{a.ndim}-dimensional array given. Array must be at least two-dimensional")
    isVectors = _vectors(a, b)
    b = b[..., None] if isVectors else b
    m, n = a.shape[-2:]
    if b.shape[-2] != m:
        raise LinAlgError("Incompatible dimensions")
    leading = _np.broadcast_shapes(a.shape[:-2], b.shape[:-2])
    k = b.shape[-1]
    isSingle = all(_np.result_type(x, _np.float16).itemsize <= 4 for x in (a, b))
    dtype = _np.float32 if isSingle else _np.float64
    a, b = (x.astype(dtype, copy=False) for x in (a, b))

    x = _np.empty(leading + (n, k), dtype)
    status = _np.zeros(leading, _np.int32)
    if m >= n:
        for column in range(k):
            more = _core._least_squares(a, b[..., column], out=x[..., column], info=True)[1]
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
    r = _core._qr_r(a if a.shape[-2] >= a.shape[-1] else _turned(a), info=True)[0]
    n = r.shape[-1]
    both = _np.zeros(r.shape[:-2] + (2 * n, 2 * n), r.dtype)
    both[..., n:, :n] = r
    w, status = _core._eigvalsh(both, info=True)
    s = _np.maximum(w[..., :n - 1:-1] if n else w, 0)
    cutoff = _cutoff(r.dtype, *a.shape[-2:], rcond)
    return s, (s > cutoff * s[..., :1]).sum(axis=-1), status


def lu_solve(lu_and_piv, b, *, out=None):
    """The x with a @ x = b from lu_factor(a), or scipy.linalg.lu_factor: b (..., n), or (..., n, k), as in solve().

    Singular factors give infinities or NaN.
    """
    lu, piv = lu_and_piv
    return _core._lu_solve(lu, _np.asarray(piv, _np.int32), b, out=out)


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
    return _core._cho_solve(c if lower else _turned(c), b, out=out)


def norm(x, ord=None, axis=None, keepdims=False, *, out=None):
    """Norms, as numpy.linalg.norm: of vectors along an axis, of matrices in two axes, of all x if axis is None.

    Euclidean norms of vectors and Frobenius norms of matrices are the library's; all other ones are numpy's.
    """
    if isinstance(axis, int) and ord in (None, 2):
        result = _core._length(x if axis == -1 else _np.moveaxis(_np.asarray(x), axis, -1))
    elif isinstance(axis, tuple) and len(axis) == 2 and ord in (None, "fro", "f") and axis[0] != axis[1]:
        result = _core._frobenius(x if axis == (-2, -1) else _np.moveaxis(_np.asarray(x), axis, (-2, -1)))
    else:
        return _into(out, _np.linalg.norm(x, ord, axis, keepdims))
    return _into(out, _np.expand_dims(result, axis) if keepdims else result)


for _name in __all__:
    if getattr(globals()[_name], "__module__", None) in (_core.__name__, None):
        globals()[_name].__module__ = __name__
