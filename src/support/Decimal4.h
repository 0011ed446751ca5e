#pragma once

#include <QtGlobal>
#include <compare>

/// A number with four decimal places, held as a whole number of ten-thousandths.
///
/// Sums and differences are exact, and so are products with a whole number. What cannot be exact, a product of two
/// such numbers and what is made of a double, goes to the nearest number with four places, a half to the even one.
///
/// Nothing is checked. Results reach to 922 million millions on both sides of 0, products of two with places only
/// to 92 thousand millions: they have eight places before they are rounded.
class Decimal4
{
public:
    constexpr Decimal4() = default;

    /// A whole number.
    constexpr Decimal4(qint64 number)
        : tenThousandths(number * one)
    {
    }

    static constexpr Decimal4 ofTenThousandths(qint64 count)
    {
        Decimal4 number;
        number.tenThousandths = count;
        return number;
    }

    /// No number at all is 0; one outside the range is cut to it.
    static Decimal4 rounded(double number);

    constexpr qint64 inTenThousandths() const { return tenThousandths; }
    constexpr double toDouble() const { return static_cast<double>(tenThousandths) / one; }

    /// What stands before the point: -1 of -1.25.
    constexpr qint64 wholePart() const { return tenThousandths / one; }

    /// What stands behind it, without a sign: 0.25 of -1.25.
    constexpr Decimal4 fraction() const
    {
        const qint64 rest = tenThousandths % one;
        return ofTenThousandths(rest < 0 ? -rest : rest);
    }

    /// The nearest whole number, of two the even one.
    constexpr qint64 nearest() const { return dividedByOne(tenThousandths); }

    constexpr Decimal4 operator-() const { return ofTenThousandths(-tenThousandths); }

    constexpr Decimal4& operator+=(Decimal4 other)
    {
        tenThousandths += other.tenThousandths;
        return *this;
    }

    friend constexpr Decimal4 operator+(Decimal4 a, Decimal4 b) { return a += b; }
    friend constexpr Decimal4 operator-(Decimal4 a, Decimal4 b) { return a += -b; }

    friend constexpr Decimal4 operator*(Decimal4 a, Decimal4 b)
    {
        return ofTenThousandths(dividedByOne(a.tenThousandths * b.tenThousandths));
    }

    friend constexpr Decimal4 times(qint64 count, Decimal4 number)
    {
        return ofTenThousandths(count * number.tenThousandths);
    }

    friend constexpr auto operator<=>(Decimal4, Decimal4) = default;

private:
    static constexpr qint64 one = 10000;

    // Rounded down after half is added, and back from the odd neighbour where the sum came out even: without a
    // branch, for the pictures' pixels have a dozen of these each.
    static constexpr qint64 dividedByOne(qint64 number)
    {
        const qint64 sum = number + one / 2;
        const qint64 rest = sum % one;
        return (sum / one - qint64{rest < 0}) & ~qint64{rest == 0};
    }

    qint64 tenThousandths = 0;
};
