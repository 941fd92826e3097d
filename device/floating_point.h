// Doubles in a host program that has changed the floating-point environment of its threads: that unmasks
// exceptions, rounds another way, or takes the smallest numbers for zero. The results here are those of the
// default environment, nothing is raised, and the host's environment stays as it was.
#pragma once

#include <cfenv>

namespace telvofm {

// While it lives, its thread has the default environment.
//
// A compiler may move arithmetic out of such a scope; it moves no call and no access to something volatile.
class DefaultFloatingPoint
{
public:
    DefaultFloatingPoint();
    ~DefaultFloatingPoint();
    DefaultFloatingPoint(const DefaultFloatingPoint&) = delete;
    DefaultFloatingPoint& operator=(const DefaultFloatingPoint&) = delete;

private:
    // Each platform keeps one of them: on Windows std::fenv_t leaves out the register of the arithmetic on
    // doubles.
    [[maybe_unused]] std::fenv_t host;
    [[maybe_unused]] unsigned hostControl;
};

double quotient(int dividend, int divisor);

// A negative zero is zero and not negative; what is not a number is neither.
bool isZero(double value);
bool isNegative(double value);

// Toward zero; a value that no 32-bit integer holds (and what is not a number) becomes the smallest one, as
// on the processor that the printer's programs were first written for.
int truncated(double value);

} // namespace telvofm
