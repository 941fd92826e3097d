// What exports of the library send, as the printer's exchange takes it from a real connection. The printer
// refuses everything, so that one exchange ends each call.
#pragma once

#include "tests/system/printer_thread.h"
#include "tests/unit/own_folder.h"
#include "tests/unit/printer/sample_arguments.h"
#include "virtual_printer/language/exchange.h"

#include <mutex>
#include <optional>

namespace virtual_printer {

class CapturedRequests
{
public:
    CapturedRequests()
    {
        setLogginOff();
        if (openFM(printer.address().c_str()) != 0) {
            throw std::runtime_error("the library could not connect");
        }
    }
    ~CapturedRequests() { closeFM(); }
    CapturedRequests(const CapturedRequests&) = delete;
    CapturedRequests& operator=(const CapturedRequests&) = delete;

    // Nothing when the call has sent nothing.
    std::optional<Request> requestOf(const SampleCall& sample)
    {
        last().reset();
        const telvofm::tools::Export* called = telvofm::tools::findExport(sample.name);
        if (called == nullptr) {
            throw std::invalid_argument(std::string(sample.name) + " is no export");
        }
        constexpr std::size_t bufferSize = 64;
        called->call(argumentsOf(sample, bufferSize, folder.file("reply")), context);
        const std::scoped_lock lock(mutex);
        return request;
    }

private:
    // The connection's thread is idle between calls: an answer has ended each of them.
    std::optional<Request>& last()
    {
        const std::scoped_lock lock(mutex);
        return request;
    }

    void refuseAll(wire::Connection& connection)
    {
        constexpr std::chrono::milliseconds patience{60000};
        constexpr unsigned char anyRefusal = 5;
        Exchange exchange;
        while (const auto bytes = connection.receive(1, patience)) {
            for (const char byte : *bytes) {
                const Incoming incoming = exchange.take(static_cast<unsigned char>(byte));
                if (const auto* taken = std::get_if<Request>(&incoming)) {
                    {
                        const std::scoped_lock lock(mutex);
                        request = *taken;
                    }
                    connection.send(Exchange::refusal(anyRefusal));
                }
            }
        }
    }

    telvofm::test::OwnFolder folder;
    telvofm::tools::CallContext context;
    std::mutex mutex;
    std::optional<Request> request;
    telvofm::test::PrinterThread printer{[this](wire::Connection& connection) { refuseAll(connection); }};
};

} // namespace virtual_printer
