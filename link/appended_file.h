// The file of a log, opened for one record that is added at its end in one write, and closed with its owner.
// What cannot be written is lost. It is the system's file and no stream: a stream costs a seek and a buffer
// for every record, a tenth of a sale. There is one implementation per platform.
#pragma once

#include <string>
#include <string_view>

namespace telvofm {

class AppendedFile
{
public:
    explicit AppendedFile(const std::string& path);
    ~AppendedFile();
    AppendedFile(const AppendedFile&) = delete;
    AppendedFile& operator=(const AppendedFile&) = delete;

    [[nodiscard]] bool isOpen() const;
    void append(std::string_view record) const;

private:
    static constexpr int invalid = -1;

    int descriptor = invalid;
};

} // namespace telvofm
