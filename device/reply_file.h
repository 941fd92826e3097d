// The file that a reply goes into, through the C library's files: the stream classes of C++ would make the
// library for Windows twice as large.
#pragma once

#include <cstdio>
#include <memory>
#include <string_view>

namespace telvofm {

class ReplyFile
{
public:
    // Creates or empties the file; throws Telvo06FMException with transportFailure when it cannot.
    explicit ReplyFile(std::string_view name);

    // Writes everything and closes the file. A disk that is full is a failure as well: the caller must not
    // believe that the data is there.
    void writeWhole(std::string_view data);

private:
    struct Close
    {
        void operator()(std::FILE* open) const { static_cast<void>(std::fclose(open)); }
    };
    std::unique_ptr<std::FILE, Close> file;
};

} // namespace telvofm
