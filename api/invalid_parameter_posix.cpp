#include "api/invalid_parameter.h"

#include <cstdio>
#include <cstdlib>

namespace telvofm {

void raiseInvalidParameter()
{
    static_cast<void>(std::fputs("telvofm: the caller's buffer is too small for the printer's reply; "
                                 "pass a larger one, or use a result object\n",
                                 stderr));
    std::abort();
}

} // namespace telvofm
