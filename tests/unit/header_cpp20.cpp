// The header serves C++ as it stands: nothing is included before it.
#include "telvofm.h"

int main()
{
    return getVersion() == 106 ? 0 : 1;
}
