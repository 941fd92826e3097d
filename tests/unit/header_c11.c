/* The header is self-contained plain C: nothing is included before it. */
#include "telvofm.h"

/* What the library takes as a byte is a bool to its callers. */
_Static_assert(_Generic(&freeID, int (*)(int, _Bool, const char*) : 1, default : 0), "freeID");
_Static_assert(_Generic(&setAutoTwoLineItem, void (*)(_Bool) : 1, default : 0), "setAutoTwoLineItem");

int main(void)
{
    return getVersion() == 106 ? 0 : 1;
}
