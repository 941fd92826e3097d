#include "device/reply_file.h"

#include "link/telvo06fm_exception.h"

#include <new>
#include <string>

namespace telvofm {
namespace {

// Want of memory is one of the reasons for which a file cannot be opened.
std::FILE* created(std::string_view name)
{
    try {
        return std::fopen(std::string(name).c_str(), "wb");
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

} // namespace

ReplyFile::ReplyFile(std::string_view name) : file(created(name))
{
    if (!file) {
        throw Telvo06FMException(code::transportFailure);
    }
    static_cast<void>(std::setvbuf(file.get(), nullptr, _IONBF, 0)); // the reply goes out in one write
}

void ReplyFile::writeWhole(std::string_view data)
{
    const bool isWritten = std::fwrite(data.data(), 1, data.size(), file.get()) == data.size();
    const bool isClosed = std::fclose(file.release()) == 0;
    if (!isWritten || !isClosed) {
        throw Telvo06FMException(code::transportFailure);
    }
}

} // namespace telvofm
