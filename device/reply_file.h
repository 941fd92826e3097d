// The file that a reply goes into.
#pragma once

#include "link/open_file.h"

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
    OpenFile file;
};

} // namespace telvofm
