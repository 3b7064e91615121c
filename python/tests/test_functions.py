"""Functions of the user's: their exceptions, nesting, threads; nothing is kept after a call."""
import gc
import resource
import signal
import sys
import threading
import traceback
import tracemalloc
import unittest
import warnings

import numpy as np

import orvel


class Stop(Exception):
    pass


def stops_at(count, calls):
    def function(x):
        calls.append(x)
        if len(calls) == count:
            raise Stop("at the fifth")
        return abs(x - 0.1) ** 0.5

    return function


class Functions(unittest.TestCase):
    def test_an_exception_ends_the_routine_and_is_the_callers(self):
        for routine, *rest in ((orvel.qdags, 0, 1), (orvel.qdag, 0, 1),
                               (orvel.zreal, [0.5, 1.0]), (orvel.uvmif, 0.5, 3.0), (orvel.q9ag, 0, 1)):
            for precision in ("f4", "f8"):
                calls = []
                names = []
                try:
                    routine(stops_at(5, calls), *rest, dtype=precision)
                except Stop as stop:
                    names = [frame.name for frame in traceback.extract_tb(stop.__traceback__)]
                self.assertEqual(names[-1:], ["function"])
                self.assertEqual(len(calls), 5)
        self.assertEqual(orvel.qdags(lambda x: x, 0, 2).result, 2)

    def test_an_interrupt_ends_the_routine(self):
        calls = []

        def function(x):
            calls.append(x)
            if len(calls) == 3:
                signal.raise_signal(signal.SIGINT)
            return x

        # A job in the background is started with interrupts ignored.
        before = signal.signal(signal.SIGINT, signal.default_int_handler)
        self.addCleanup(signal.signal, signal.SIGINT, before)
        with self.assertRaises(KeyboardInterrupt):
            orvel.qdags(function, 0, 1)
        self.assertLess(len(calls), 5)
        self.assertEqual(orvel.gamma(5), 24)

    def test_whatever_can_be_called(self):
        class Line:
            slope = 3

            def at(self, x):
                return self.slope * x

            __call__ = at

        for function in (Line(), Line().at, lambda x: np.float32(3 * x), lambda x: np.array(3 * x), (3.0).__mul__):
            self.assertAlmostEqual(orvel.qdags(function, 0, 2).result, 6)
        self.assertEqual(orvel.qdags(lambda x: 3, 0, 2).result, 6)
        self.assertEqual(orvel.qdags(lambda x: True, 0, 2).result, 2)

    def test_calls_within_calls(self):
        def inner(y):
            return orvel.qdags(lambda x: x * y, 0, 1).result

        self.assertAlmostEqual(orvel.qdags(inner, 0, 1).result, 0.25)

        def depth(n, x):
            return x if n == 0 else orvel.q4ag(lambda y: depth(n - 1, y), 0, x).result if n < 3 else depth(n - 1, x)

        self.assertAlmostEqual(depth(2, 1.0), 1 / 6)

        def bad(x):  # errors of inner calls are those of the function's own, who may catch them
            try:
                orvel.lsarg(np.ones((2, 2)), [1.0, x])
            except orvel.FatalError:
                return 1.0
            return 0.0

        with warnings.catch_warnings():
            warnings.simplefilter("error")
            self.assertEqual(orvel.qdags(bad, 0, 1).result, 1)
        with self.assertRaises(orvel.FatalError) as caught:
            orvel.qdags(lambda x: orvel.lsarg(np.ones((2, 2)), [1.0, x])[0], 0, 1)
        self.assertEqual(caught.exception.routine, "DLSARG")

        def bottomless(x):
            return orvel.q4ag(bottomless, 0, 1).result

        with self.assertRaises(RecursionError):
            orvel.q4ag(bottomless, 0, 1)
        self.assertEqual(orvel.qdags(lambda x: x, 0, 2).result, 2)

    def test_threads(self):
        results, start = {}, threading.Barrier(6)

        def work(k):
            start.wait()
            try:
                results[k] = [orvel.qdags(lambda x: k * x, 0, 2).result for _ in range(50)]
                orvel.qdags(stops_at(k + 1, []), 0, 1)
            except Stop:
                results[k].append("stopped")

        threads = [threading.Thread(target=work, args=(k,)) for k in range(6)]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        for k in range(6):
            np.testing.assert_allclose(results[k][:-1], 2 * k)
            self.assertEqual(results[k][-1], "stopped")


class NothingIsKept(unittest.TestCase):
    def calls(self):
        a, b = np.asfortranarray(np.eye(20)), np.ones(20)
        orvel.lsarg(a, b)
        orvel.gemm(a, a)
        orvel.qdags(lambda x: x, 0, 1)
        for call in (lambda: orvel.qdags(stops_at(5, []), 0, 1), lambda: orvel.lsarg(np.ones((20, 20)), b),
                     lambda: orvel.gamma(0.0), lambda: orvel.lsarg(a, "b"), lambda: orvel.qdags(lambda x: None, 0, 1)):
            try:
                call()
            except (Stop, orvel.Error, TypeError):
                pass

    def test_after_many_calls(self):
        for _ in range(50):
            self.calls()
        gc.collect()
        tracemalloc.start()
        resident = resource.getrusage(resource.RUSAGE_SELF).ru_maxrss
        before = tracemalloc.get_traced_memory()[0]
        for _ in range(400):
            self.calls()
        gc.collect()
        after = tracemalloc.get_traced_memory()[0]
        tracemalloc.stop()
        self.assertLess(after - before, 20000)
        self.assertLess(resource.getrusage(resource.RUSAGE_SELF).ru_maxrss - resident, 4000)  # kB: the library's own

    def test_no_cycle_holds_arrays_or_functions(self):
        a, b = np.asfortranarray(np.eye(3)), np.ones(3)

        def function(x):
            return x

        gc.collect()
        gc.disable()
        try:
            counts = [sys.getrefcount(o) for o in (a, b, function)]
            for _ in range(10):
                orvel.lsarg(a, b)
                orvel.qdags(function, 0, 1)
                for call in (lambda: orvel.lsarg(a, b, 3), lambda: orvel.qdags(function, 0, 1, errabs=-1.0)):
                    try:
                        call()
                    except orvel.TerminalError:
                        pass
            self.assertEqual([sys.getrefcount(o) for o in (a, b, function)], counts)
        finally:
            gc.enable()


if __name__ == "__main__":
    unittest.main()
