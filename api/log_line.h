// One line of the call log while it is made. The room that its parts take is known before, so that nothing is
// checked while it is written; a short line, as nearly all are, takes no memory from the heap, and a long
// one, which holds a journal, is made in one piece.
#pragma once

#include "device/amount.h"

#include <array>
#include <memory>
#include <string_view>

namespace telvofm {

class LogLine
{
public:
    // The most characters that a part takes.
    template <std::size_t size>
    static std::size_t roomFor(const char (&/*label*/)[size])
    {
        return size - 1;
    }
    static std::size_t roomFor(std::string_view text) { return text.size(); }
    static std::size_t roomFor(char /*character*/) { return 1; }
    static std::size_t roomFor(bool /*flag*/) { return 1; }
    static std::size_t roomFor(int /*number*/) { return NumberText::mostCharacters; }
    static std::size_t roomFor(unsigned int /*number*/) { return NumberText::mostCharacters; }
    static std::size_t roomFor(std::size_t /*number*/) { return NumberText::mostCharacters; }
    static std::size_t roomFor(const Amount& amount) { return amount.mostCharacters(); }
    // A caller's text is logged from its copy.
    static std::size_t roomFor(const void* text) = delete;

    // For parts that take so much room together.
    explicit LogLine(std::size_t room);

    template <std::size_t size>
    void add(const char (&label)[size])
    {
        add(std::string_view(label, size - 1));
    }
    void add(std::string_view text);
    void add(char character);
    void add(bool flag) { add(flag ? '1' : '0'); }
    void add(int number) { addWhole(number); }
    void add(unsigned int number) { addWhole(number); }
    void add(std::size_t number) { addWhole(static_cast<long long>(number)); }
    void add(const Amount& amount);

    [[nodiscard]] std::string_view view() const { return {begin, end}; }

private:
    static constexpr std::size_t usualRoom = 256;

    void addWhole(long long number);

    std::array<char, usualRoom> usual;
    std::unique_ptr<char[]> longer;
    char* begin;
    char* end;
};

} // namespace telvofm
