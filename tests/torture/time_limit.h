// Ends the program when a call does not return, and says which.
#pragma once

#include <string>

namespace telvofm::test::torture {

class TimeLimit
{
public:
    explicit TimeLimit(const std::string& what);
    ~TimeLimit();
    TimeLimit(const TimeLimit&) = delete;
    TimeLimit& operator=(const TimeLimit&) = delete;

    // Once, before the host's handlers are looked at.
    static void install();
};

} // namespace telvofm::test::torture
