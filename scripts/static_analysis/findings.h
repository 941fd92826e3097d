// What the static analysis must find in a header of ours; see findings.cpp.
#pragma once

#include <string>

class Base
{
public:
    virtual ~Base() = default;
    virtual bool isEmpty(const std::string& text) = 0;
};

class Derived : public Base
{
public:
    virtual bool isEmpty(const std::string& text) // finds modernize-use-override
    {
        return text.size() == 0; // finds readability-container-size-empty
    }
};
