#include "device/floating_point.h"

#include <xmmintrin.h>

namespace telvofm {

DefaultFloatingPoint::DefaultFloatingPoint() : hostControl(_mm_getcsr())
{
    constexpr unsigned allMaskedToNearest = 0x1F80;
    _mm_setcsr(allMaskedToNearest);
}

DefaultFloatingPoint::~DefaultFloatingPoint()
{
    _mm_setcsr(hostControl);
}

} // namespace telvofm
