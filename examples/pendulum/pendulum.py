"""examples/pendulum/pendulum.py - the period of a pendulum, from Python

    pendulum.py

The amplitude comes from around the function.
"""
import math

import orvel

LENGTH, GRAVITY = 67.0, 9.809


def period(degrees):
    amplitude = math.radians(degrees)

    def integrand(t):
        return 1 / math.sqrt(2 * math.sin((amplitude + t) / 2) * math.sin((amplitude - t) / 2))

    return 4 * math.sqrt(LENGTH / (2 * GRAVITY)) * orvel.qdags(integrand, 0, amplitude, 0, 1e-10).result


def exact(degrees):
    a, b = 1.0, math.cos(math.radians(degrees) / 2)
    while abs(a - b) > 1e-15 * a:
        a, b = (a + b) / 2, math.sqrt(a * b)
    return 2 * math.pi * math.sqrt(LENGTH / GRAVITY) / a


for degrees in (10, 90, 170):
    print(f"{degrees:10d} {period(degrees):11.6f}")
ours, known = period(170), exact(170)
agrees = abs(ours - known) <= 1e-9 * known
print("\n check: period at 170 degrees:")
print(f"     {ours:.10f}, known {known:.10f} within {1e-9 * known:.10f} "
      f"(Gauss's arithmetic-geometric mean): {'agrees' if agrees else 'DIFFERS'}")
raise SystemExit(not agrees)
