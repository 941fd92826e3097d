// One of the scripted links as the hostile printer works it; there is one for each kind, in files of their
// own, because what the two scripts are made of has the same names.
#pragma once

#include <chrono>
#include <string>

namespace telvofm::fuzz {

class HostileLink
{
public:
    HostileLink() = default;
    HostileLink(const HostileLink&) = delete;
    HostileLink& operator=(const HostileLink&) = delete;
    virtual ~HostileLink() = default;

    // What has not been played yet is forgotten.
    virtual void begin() = 0;
    // What the library meets next, in this order. `choice` is any number.
    virtual void say(const std::string& bytes) = 0;
    virtual void fallSilent(std::chrono::milliseconds lasting) = 0;
    virtual void breakDown(unsigned choice) = 0;
    virtual void throwOnce() = 0;
    // What goes wrong with the calls of the system themselves.
    virtual void disturb(unsigned choice) = 0;
};

HostileLink& hostileTcp();
HostileLink& hostileSerial();

// How often the library has sent something since that link began.
int sendsOverTcp();
int sendsOnSerial();

} // namespace telvofm::fuzz
