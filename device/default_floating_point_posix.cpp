#include "device/floating_point.h"

namespace telvofm {

DefaultFloatingPoint::DefaultFloatingPoint()
{
    static_cast<void>(std::fegetenv(&host));
    static_cast<void>(std::fesetenv(FE_DFL_ENV));
}

DefaultFloatingPoint::~DefaultFloatingPoint()
{
    static_cast<void>(std::fesetenv(&host));
}

} // namespace telvofm
