// A floating-point environment as host programs set it for their own arithmetic, for the processor's two
// floating-point units. In between nothing may be computed with doubles but by the library.
#pragma once

#include <xmmintrin.h>

namespace telvofm::test {

// What the register of the arithmetic on doubles holds.
namespace environment {
inline constexpr unsigned roundDownMasked = 0x1F80 | 0x2000;
inline constexpr unsigned roundUpUnmasked = 0x4000;
inline constexpr unsigned towardZeroUnmaskedWithoutSubnormals = 0x6000 | 0x8040;
inline constexpr unsigned all[] = {roundDownMasked, roundUpUnmasked, towardZeroUnmaskedWithoutSubnormals};
} // namespace environment

// Of the older of the two units.
inline unsigned short controlWord()
{
    unsigned short word = 0;
    asm volatile("fnstcw %0" : "=m"(word));
    return word;
}

// The exceptions that it has noted.
inline unsigned short statusFlags()
{
    constexpr unsigned short flags = 0x3F;
    unsigned short word = 0;
    asm volatile("fnstsw %0" : "=m"(word));
    return word & flags;
}

class HostileFloatingPoint
{
public:
    explicit HostileFloatingPoint(unsigned hostile) : set(hostile)
    {
        loadControlWord(hostileControlWord);
        _mm_setcsr(set);
    }
    ~HostileFloatingPoint()
    {
        _mm_setcsr(before);
        loadControlWord(controlWordBefore);
    }
    HostileFloatingPoint(const HostileFloatingPoint&) = delete;
    HostileFloatingPoint& operator=(const HostileFloatingPoint&) = delete;

    // Masks, rounding and the exceptions that have been noted, too.
    [[nodiscard]] bool isUntouched() const
    {
        return _mm_getcsr() == set && controlWord() == hostileControlWord && statusFlags() == 0;
    }

private:
    // Everything unmasked, upwards, 53 bits.
    static constexpr unsigned short hostileControlWord = 0x0A40;

    static void loadControlWord(unsigned short word) { asm volatile("fldcw %0" : : "m"(word)); }

    const unsigned set;
    const unsigned before = _mm_getcsr();
    const unsigned short controlWordBefore = controlWord();
};

} // namespace telvofm::test
