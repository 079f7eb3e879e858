"""Arithmetic in single precision, on Python floats that hold singles exactly.

Double precision has more than twice the digits, so one operation in it, rounded again, is the operation
rounded once.
"""

import math
import struct


def to_single(value):
    """The nearest single, infinite where that is beyond the largest one."""
    try:
        return struct.unpack("<f", struct.pack("<f", value))[0]
    except OverflowError:
        return math.copysign(math.inf, value)


def add(left, right):
    return to_single(left + right)


def multiply(left, right):
    return to_single(left * right)


def divide(dividend, divisor):
    """As the processor does it: a division by zero gives infinity, of zero by zero no number."""
    if divisor != 0.0:
        return to_single(dividend / divisor)
    if dividend == 0.0 or math.isnan(dividend):
        return math.nan
    return math.copysign(math.inf, dividend) * math.copysign(1.0, divisor)
