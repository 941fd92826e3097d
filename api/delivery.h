// How a reply reaches the caller's memory. The kinds differ in what they do with 0x00 bytes, terminators and
// buffers that are too small; the differences are part of the interface.
#pragma once

#include <string_view>

namespace telvofm {

// The reply's bytes, 0x00 included, without a terminator. An empty reply leaves the buffer alone. One that
// does not fit fills the whole buffer with 0x00 and raises the invalid-parameter failure.
void copyExactly(std::string_view reply, char* buffer, int bufferSize);

// As much of the reply as fits, each 0x00 as a blank, and a terminator at the reply's full length: the copy
// is clipped and the terminator is not, which is meant.
void copyBlanked(std::string_view reply, char* buffer, int bufferSize);

// As much of the reply as fits, each 0x00 as a blank, without a terminator.
void copyBlankedWithoutTerminator(std::string_view reply, char* buffer, int bufferSize);

// The reply up to its first 0x00, with a terminator. When both do not fit, the buffer is emptied and the
// invalid-parameter failure raised.
void copyText(std::string_view reply, char* buffer, int bufferSize);

} // namespace telvofm
