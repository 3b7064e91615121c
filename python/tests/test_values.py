"""Values against numpy and scipy; which member is called; where arrays lie."""
import array
import unittest

import numpy as np

import orvel

try:
    import scipy.integrate
    import scipy.interpolate
    import scipy.linalg
    import scipy.special
except ImportError:
    scipy = None

TYPES = (np.float32, np.float64, np.complex64, np.complex128)


def matrix(rng, shape, kind, order="F"):
    a = rng.standard_normal(shape)
    if np.dtype(kind).kind == "c":
        a = a + 1j * rng.standard_normal(shape)
    return np.asarray(a, dtype=kind, order=order)


class Values(unittest.TestCase):
    def setUp(self):
        self.rng = np.random.default_rng(5)

    def close(self, ours, theirs, factor=50):
        eps = np.finfo(getattr(ours, "dtype", np.float64)).eps
        scale = np.max(np.abs(theirs)) if np.size(theirs) else 0
        np.testing.assert_allclose(ours, theirs, rtol=0, atol=factor * eps * scale)

    def test_linear_systems(self):
        for kind in TYPES:
            a, b = matrix(self.rng, (9, 9), kind) + 9 * np.eye(9, dtype=kind), matrix(self.rng, 9, kind)
            x = orvel.lsarg(a, b)
            self.assertEqual(x.dtype, kind)
            self.close(x, np.linalg.solve(a, b))
            self.close(orvel.lsarg(a, b, 2), np.linalg.solve(a.conj().T, b))
            self.close(orvel.linrg(a), np.linalg.inv(a))
            fact, ipvt, rcond = orvel.lfcrg(a)
            self.close(orvel.lfsrg(fact, ipvt, b), x)
            self.assertTrue(0.9 < rcond * np.linalg.cond(a, 1) < 10)
            det1, det2 = orvel.lfdrg(*orvel.lftrg(a))
            self.close(np.asarray(det1 * 10**det2, kind), np.linalg.det(a), 100)
            self.assertEqual(np.asarray(det1).dtype, kind)
            upper = np.triu(orvel.linrt(a, ipath=2))
            self.close(upper, np.linalg.inv(np.triu(a)))

    def test_transforms(self):
        for n in (8, 15, 101):
            z, r = matrix(self.rng, n, complex), matrix(self.rng, n, float)
            self.close(orvel.fftcf(z), np.fft.fft(z))
            self.close(orvel.fftcb(z), n * np.fft.ifft(z))
            parts = np.fft.rfft(r).view(float)
            self.close(orvel.fftrf(r), np.concatenate([parts[:1], parts[2:]])[:n])
            self.close(orvel.fftrb(orvel.fftrf(r)), n * r)
            work = orvel.fftci(n)
            self.close(orvel.f2tcf(z, work), np.fft.fft(z))
            self.assertEqual(orvel.fftcf(z.astype("c8")).dtype, np.complex64)

    def test_matrix_kernels(self):
        for kind in TYPES:
            a, b = matrix(self.rng, (3, 4), kind), matrix(self.rng, (4, 5), kind)
            c, x, y = matrix(self.rng, (3, 5), kind), matrix(self.rng, 4, kind), matrix(self.rng, 3, kind)
            self.close(orvel.gemm(a, b), a @ b)
            self.close(orvel.gemm(a.T, b, "t", c=c, alpha=2, beta=3), 2 * (a @ b) + 3 * c)
            self.close(orvel.gemm(a.conj().T, b, transa="C", c=c), a @ b + c)
            self.close(orvel.gemv(a, x), a @ x)
            self.close(orvel.gemv(a, y, trans="C"), a.conj().T @ y)
            self.close(orvel.syrk(a), np.triu(a @ a.T))
            square = matrix(self.rng, (3, 3), kind) + 4 * np.eye(3, dtype=kind)
            self.close(orvel.trsv(square, y, uplo="L"), np.linalg.solve(np.tril(square), y))
            self.close(orvel.trsm(square, c), np.linalg.solve(np.triu(square), c))
            band = np.zeros((3, 5), kind)
            full = np.zeros((5, 5), kind)
            for d in (-1, 0, 1):
                values = matrix(self.rng, 5 - abs(d), kind)
                full += np.diag(values, d)
                band[1 - d, max(d, 0):5 + min(d, 0)] = values
            self.close(orvel.gbmv(1, 1, band, np.arange(5).astype(kind), m=5), full @ np.arange(5))

    def test_vector_kernels_take_views_as_they_are(self):
        for kind in TYPES:
            base = matrix(self.rng, 24, kind)
            for x, y in ((base[::2], base[1::2]), (base[:12][::-1], base[12:]), (base[::3], base[1::3][::-1]),
                         (base.reshape(4, 6)[:, 2], base[:4])):
                expected = 2 * x + y
                kept = base.copy()
                self.close(orvel.axpy(2, x, y), expected)
                np.testing.assert_array_equal(base, kept)
                dot = orvel.dotu if np.dtype(kind).kind == "c" else orvel.dot
                self.close(dot(x, y), np.sum(x * y))
                self.close(orvel.nrm2(x), np.linalg.norm(x))
        x = np.arange(6.0)
        orvel.scal(2.0, x[::-2], overwrite_x=True)  # backwards in a routine that takes that for empty
        np.testing.assert_array_equal(x, [0, 2, 2, 6, 4, 10])
        self.assertEqual(orvel.iamax(np.array([5.0, 1, 2])[::-1]), 3)
        self.close(orvel.asum(np.broadcast_to(2.0, 5)), 10)
        self.assertEqual(orvel.scal(2, np.ones(2, complex)).dtype, complex)
        self.close(orvel.rot([1.0], [2.0 + 1j], 0.0, 1.0).x, np.array([2 + 1j]))

    def test_integrals_zeros_minima(self):
        result, esterr = orvel.qdags(np.exp, 0, 1)
        self.close(result, np.e - 1)
        self.assertLess(esterr, 1e-8)
        self.assertLess(abs(orvel.qdags(np.sin, -1, 1).result), 1e-15)  # an absolute tolerance, too, unless it is named
        self.close(orvel.qdag(lambda x: np.cos(40 * x), 0, 2, irule=6).result, np.sin(80) / 40, 1000)
        lists = orvel.q2ags(lambda x: abs(x - 0.3), 0, 1, errrel=1e-12)
        self.assertEqual(lists.neval, 42 * lists.nsub - 21)
        self.assertLess(abs(np.sum(lists.subres[:lists.nsub]) - 0.29), np.sum(lists.suberr[:lists.nsub]))
        x, info = orvel.zreal(lambda t: t * t - 2, [1.0, -1.0])
        self.close(x, np.array([2**0.5, -(2**0.5)]))
        self.assertAlmostEqual(orvel.uvmif(lambda t: (t - 1) ** 2, 0, 5), 1, 6)
        self.assertIsInstance(orvel.qdags(lambda t: t, 0, 1, dtype="f4").result, np.float32)
        self.assertIsInstance(orvel.qdags(lambda t: t, np.float32(0), 1).result, np.float32)

    def test_splines(self):
        t = np.linspace(0, 3, 12)
        brkpt, coef = orvel.csint(t, np.sin(t))
        at = np.linspace(-0.2, 3.2, 50)
        values = orvel.csval(at, brkpt, coef)
        self.assertEqual(values.shape, at.shape)
        self.assertIsInstance(orvel.csval(1.5, brkpt, coef), float)
        inside = (at >= 0) & (at <= 3)
        self.assertLess(np.max(np.abs(values - np.sin(at))[inside]), 1e-3)
        self.assertEqual(values[-1], orvel.ppval(at[-1], brkpt, coef))  # the last piece, not what lies behind it
        if scipy:
            theirs = scipy.interpolate.CubicSpline(t, np.sin(t))
            self.close(values, theirs(at), 1e3)
            self.close(orvel.csitg(0, at, brkpt, coef), [theirs.integrate(0, u) for u in at], 1e3)
            self.close(orvel.csder(1, at, brkpt, coef), theirs(at, 1), 1e4)

    @unittest.skipUnless(scipy, "scipy is not installed")
    def test_gamma(self):
        x = np.array([[0.3, 1.5, -2.5], [10, 33.3, 170]])
        self.close(orvel.alngam(x), scipy.special.gammaln(x))
        np.testing.assert_allclose(orvel.gamma(x), scipy.special.gamma(x), rtol=1e-13)
        self.assertEqual(orvel.gamma(x.astype("f4")[0]).dtype, np.float32)
        logs, signs = orvel.algams(x)
        np.testing.assert_array_equal(signs, scipy.special.gammasgn(x))

    def test_sorting_dates_random_numbers(self):
        v = self.rng.standard_normal(100)
        np.testing.assert_array_equal(orvel.svrgn(v), np.sort(v))
        rb, iperm = orvel.svrgp(v)
        np.testing.assert_array_equal(v[iperm - 1], rb)
        np.testing.assert_array_equal(orvel.svign([3, 1, 2]), [1, 2, 3])
        m = np.arange(6.0).reshape(2, 3)
        np.testing.assert_array_equal(orvel.perma(m, [3, 1, 2], 2), m[:, [2, 0, 1]])
        self.assertEqual(orvel.ndyin(orvel.ndays(1, 1, 2000) + 1000), (27, 9, 2002))
        self.assertEqual(list(orvel.idywk([1, 2], 1, 2000)), [7, 1])
        orvel.rnopt(1), orvel.rnset(123457)
        first, state = orvel.rnun(5), orvel.rnget()
        orvel.rnset(123457)
        np.testing.assert_array_equal(orvel.rnun(5), first)
        self.assertEqual(orvel.rnget(), state)
        self.close(first[0], 16807 * 123457 % (2**31 - 1) / (2**31 - 1), 1e6)


class WhereArraysLie(unittest.TestCase):
    """Memory is handed over as it is where its layout allows it."""

    def test_outputs_go_where_they_are_sent(self):
        a, b = np.asfortranarray(np.eye(3) * 2), np.arange(3.0)
        x = np.empty(3)
        self.assertIs(orvel.lsarg(a, b, out=x), x)
        np.testing.assert_array_equal(x, b / 2)
        self.assertIs(orvel.lsarg(a, b, out=b), b)  # X may be B
        np.testing.assert_array_equal(b, x)
        wide = np.zeros((5, 4), order="F")
        fact, ipvt = orvel.lftrg(a, out=(wide[1:4, :3], None))
        self.assertTrue(np.shares_memory(fact, wide))
        self.assertEqual(wide[1, 0], 2)
        self.assertFalse(wide[0].any() or wide[4].any() or wide[:, 3].any())
        rows = np.zeros((3, 3))
        self.assertIs(orvel.linrg(np.triu(np.ones((3, 3))), out=rows), rows)  # rows in turn: by way of a copy
        np.testing.assert_array_equal(rows, [[1, -1, 0], [0, 1, -1], [0, 0, 1]])
        self.assertIs(orvel.lftrg(a, out={"fact": a}).fact, a)  # FACT may be A

    def test_inputs_by_columns_are_not_copied(self):
        big = np.asfortranarray(np.arange(30.0).reshape(6, 5))
        from orvel import _arrays
        for view, leading in ((big, 6), (big[1:4, 1:4], 6), (big[:, ::2], 12), (big[2:3, :], 6), (big.T[:1], None)):
            placed = _arrays.layout(_arrays.as_array("a", view, "d"), True, False, False)
            if leading is None:
                self.assertIsNotNone(placed)
            else:
                self.assertEqual(placed, (view.ctypes.data, leading))
        self.assertIsNone(_arrays.layout(np.ones((3, 4)), True, False, False))
        self.assertIsNone(_arrays.layout(big[:4], False, False, False))  # no leading dimension to say it with
        self.assertEqual(_arrays.layout(big[0, ::-1], False, True, True), (big[0].ctypes.data, -6))

    def test_what_goes_in_and_out_is_copied_unless_it_may_be_overwritten(self):
        y, c = np.ones(4), np.ones((2, 2), order="F")
        result = orvel.axpy(1.0, np.ones(4), y)
        self.assertFalse(np.shares_memory(result, y))
        self.assertIs(orvel.axpy(1.0, np.ones(4), y, overwrite_y=True), y)
        self.assertEqual(y.tolist(), [2] * 4)
        self.assertIs(orvel.gemm(c, c.copy(order="F"), c=c.T, overwrite_c=False).base, None)
        target = np.full((2, 2), 7.0)
        self.assertIs(orvel.gemm(c, c.copy(), c=target, beta=0, overwrite_c=True), target)
        self.assertEqual(target.tolist(), [[2, 2], [2, 2]])
        self.assertEqual(orvel.axpy(1, [1, 2], (3, 4)).tolist(), [4, 6])
        self.assertEqual(orvel.axpy(1, array.array("d", [1]), array.array("d", [2])).tolist(), [3])
        work = orvel.fftci(15)
        work.flags.writeable = False
        with self.assertRaisesRegex(ValueError, "wfc is to be written to"):
            orvel.f2tcf(np.ones(15), work)

    def test_leading_parts(self):
        a = np.asfortranarray(np.diag([1.0, 2, 3, 4]))
        np.testing.assert_array_equal(orvel.lsarg(a, np.ones(4), n=2), [1, 0.5])
        self.assertEqual(orvel.dot([1.0, 2, 3], [1.0, 1, 1], n=2), 3)
        self.assertEqual(orvel.asum([], n=0), 0)
        self.assertEqual(orvel.gemm(np.ones((3, 0)), np.ones((0, 2))).tolist(), [[0, 0]] * 3)


if __name__ == "__main__":
    unittest.main()
