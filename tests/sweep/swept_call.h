// The calls of a sweep: every export that sends a command, with arguments that make sense, and what reaches
// the caller.
#pragma once

#include "tests/sweep/call_plan.h"
#include "tools/export_table.h"

#include <string>
#include <string_view>
#include <vector>

namespace telvofm::test::sweep {

struct SweptCall
{
    std::string_view name;
    std::vector<tools::Argument> arguments;
    Exchange::Kind kind; // of its request
    bool needsPictures = false;
    std::string file; // that the reply goes to
};

// Replies that go to files go to `file`; the printer's address is `address`.
std::vector<SweptCall> everyCall(const std::string& file, int address = 1);
// That of one export.
SweptCall callOf(std::string_view name, const std::string& file, int address);
// Prepares the pictures that the graphics calls upload, from a bitmap that is made at `path`.
void writePicture(const std::string& path);
void preparePictures(const std::string& path);

// What a call did for its caller.
struct Outcome
{
    int result = 0;
    std::string thrown; // the text of an exception that passed out of it
    // Whether the reply reached the caller, as its export delivers it.
    [[nodiscard]] bool delivered(std::string_view reply) const;
    [[nodiscard]] bool deliveredNothing() const;

    std::string returnedText; // of the one export that returns text
    std::string data;         // the buffer, or the contents of the object or the file
    std::string dataBefore;   // what the object held
    std::string_view name;
    bool intoBuffer = false;
    unsigned int count = 0;
};

// Stands around the call of the export itself, without what prepares and reads it.
class Around
{
public:
    Around() = default;
    Around(const Around&) = delete;
    Around& operator=(const Around&) = delete;
    virtual ~Around() = default;
    virtual void begin() {}
    virtual void end() {}
};

// The result object of the context keeps what an earlier call has put there.
Outcome perform(const SweptCall& call, tools::CallContext& context, Around& around);
Outcome perform(const SweptCall& call, tools::CallContext& context);

} // namespace telvofm::test::sweep
