"""Single-precision numbers of IEEE 754 as their 32 bits, from decimal digits and as the shortest decimal."""

import struct
import sys
from decimal import Decimal
from fractions import Fraction

from current import FormatError

sys.set_int_max_str_digits(0)

SIGN = 0x80000000
INFINITY = 0x7F800000
LEAST_EXPONENT = -149  # of the last bit of a significand
# A number of more digits before the point than this is above every float; of more zeros after it, below every float.
LARGEST_EXPONENT, SMALLEST_EXPONENT = 40, -50


def finite(bits):
    return bits & INFINITY != INFINITY


def from_decimal(literal):
    """The bits of the float nearest to a JSON number, halves to even, rounded once."""
    bits = rounded(literal)
    if not finite(bits):
        raise FormatError("above the range of a float")
    return bits


def rounded(literal):
    """The bits of a float or of an infinity."""
    sign = SIGN if literal.startswith("-") else 0
    digits, _, exponent = literal.lstrip("-").replace("E", "e").partition("e")
    whole, _, decimals = digits.partition(".")
    digits = (whole + decimals).lstrip("0")
    if not digits:
        return sign
    # The value is 0.DIGITS times ten to the power of this.
    power = int(exponent or "0") + len(digits) - len(decimals)
    if power > LARGEST_EXPONENT:
        return sign | INFINITY
    if power < SMALLEST_EXPONENT:
        return sign
    return sign | nearest(Fraction(int(digits)) * Fraction(10) ** (power - len(digits)))


def nearest(value):
    """The bits of the float nearest to a positive fraction, or of infinity."""
    # At least 23 bits of the significand are before the point, and no more than 24, unless the float is subnormal.
    exponent = max(LEAST_EXPONENT, value.numerator.bit_length() - value.denominator.bit_length() - 23)
    if value >= Fraction(2) ** (exponent + 24):
        exponent += 1
    elif exponent > LEAST_EXPONENT and value < Fraction(2) ** (exponent + 23):
        exponent -= 1
    significand = round(value / Fraction(2) ** exponent)  # halves to even
    return min(INFINITY, significand + (exponent - LEAST_EXPONENT << 23))


def to_decimal(bits):
    """The shortest spelling that is read as the float; of several, the one nearest to it."""
    if bits & ~SIGN == 0:
        return "-0.0" if bits else "0"
    value = struct.unpack("<f", struct.pack("<I", bits))[0]
    for precision in range(9):
        for literal in neighbours(f"{value:.{precision}e}"):
            if rounded(literal) == bits:
                return spell(literal, value)
    raise AssertionError("nine digits are enough for every float")


def neighbours(literal):
    """The decimal and the next one away from zero: above a power of two, more decimals are read as it than below it."""
    digits, exponent = literal.split("e")
    decimal = Decimal(digits)
    step = Decimal((int(decimal < 0), (1,), decimal.as_tuple().exponent))
    return literal, f"{decimal + step:f}e{exponent}"


def spell(literal, value):
    """The digits with an exponent, or without one where that is not longer."""
    sign, (digits, exponent) = "-" * (value < 0), literal.lstrip("-").split("e")
    digits, exponent = digits.replace(".", "").rstrip("0"), int(exponent)
    scientific = digits[0] + ("." + digits[1:] if len(digits) > 1 else "") + f"e{exponent:+03}"
    if exponent < 0:
        fixed = "0." + "0" * (-exponent - 1) + digits
    elif len(digits) <= exponent + 1:
        fixed = str(abs(int(value)))
    else:
        fixed = digits[:exponent + 1] + "." + digits[exponent + 1:]
    return sign + (fixed if len(fixed) <= len(scientific) else scientific)
