#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

// The map's counts, indices and vertex coordinates follow 16-bit rules; leaving that
// range, or indexing past an array, is an error the user's command can catch.
class OverflowError : public std::overflow_error
{
public:
    OverflowError() : std::overflow_error("Overflow") {}
};

class IndexOutOfRangeError : public std::out_of_range
{
public:
    IndexOutOfRangeError() : std::out_of_range("Subscript out of range") {}
};

class DivisionByZeroError : public std::domain_error
{
public:
    DivisionByZeroError() : std::domain_error("Division by zero") {}
};

// Every real-to-pixel conversion in the program rounds half to even.
std::int64_t RoundHalfEven(double value);

// Checked narrowing to the 16-bit range; throws OverflowError.
std::int16_t ToInt16(std::int64_t value);
std::int16_t RoundToInt16(double value);

// Checked narrowing to the 32-bit range; throws OverflowError.
std::int32_t ToInt32(std::int64_t value);
std::int32_t RoundToInt32(double value);
