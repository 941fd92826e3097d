// The printer as a careful till sees it: a call is carried out or not, and where the library cannot tell, the
// printer is asked. Prints and ends the program when the printer is somewhere where no call can have led it.
#pragma once

#include <functional>
#include <string>

namespace telvofm::test {

// What the printer has made of a call.
enum class Carried
{
    no,
    once,
    otherwise // its figure is neither that of before nor the one behind the call
};

class SoakPrinter
{
public:
    explicit SoakPrinter(const char* address);
    SoakPrinter(const SoakPrinter&) = delete;
    SoakPrinter& operator=(const SoakPrinter&) = delete;
    ~SoakPrinter();

    // Makes the call; when its outcome is unknown, `found` asks for it.
    Carried carry(const std::function<int()>& call, const std::function<Carried()>& found);
    // The same for a call that can only be carried out or not.
    bool has(const std::function<int()>& call, const std::function<Carried()>& found);

    // What a variable says about a call.
    Carried answered(const char* variable, const char* after, const char* before);
    Carried isNow(const char* variable, const char* after);
    Carried moved(const char* variable, long centsBefore, long centsAfter);
    Carried counted(const char* variable, long before);

    // The variable must have this value now.
    void expect(const char* variable, const std::string& value);

    [[nodiscard]] long calls() const { return allCalls; }
    [[nodiscard]] long refusals() const { return refused; }
    [[nodiscard]] long unknownOutcomes() const { return unknown; }
    [[nodiscard]] long unknownButDone() const { return unknownDone; }
    [[nodiscard]] long questionsAgain() const { return askedAgain; }
    [[nodiscard]] long sessions() const { return opened; }

private:
    void reopen();
    std::string ask(const char* variable);

    std::string address;
    std::string lastQuestion; // with its answer
    long allCalls = 0;
    long refused = 0;
    long unknown = 0;
    long unknownDone = 0;
    long askedAgain = 0;
    long opened = 0;
};

std::string amountOf(long cents);

} // namespace telvofm::test
