#include "virtual_printer/transport/process.h"

#include <boost/asio/windows/object_handle.hpp>
#include <csignal>
#include <cstdlib>
#include <memory>
#include <tlhelp32.h>
#include <utility>
#include <windows.h>

namespace virtual_printer {
namespace {

DWORD parentOfThisProcess()
{
    const HANDLE all = ::CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    PROCESSENTRY32 entry{};
    entry.dwSize = sizeof entry;
    DWORD parent = 0;
    for (BOOL found = ::Process32First(all, &entry); found != 0; found = ::Process32Next(all, &entry)) {
        if (entry.th32ProcessID == ::GetCurrentProcessId()) {
            parent = entry.th32ParentProcessID;
        }
    }
    ::CloseHandle(all);
    return parent;
}

} // namespace

void ignoreBrokenPipes() {}

// Ctrl+C; and Ctrl+Break, or the end of the console window, of the session or of the system.
boost::asio::signal_set endingSignals(boost::asio::io_context& context)
{
    return {context, SIGINT, SIGBREAK};
}

// The library of C waits in its own ways out for the thread that writes.
void endAtOnce()
{
    ::TerminateProcess(::GetCurrentProcess(), EXIT_SUCCESS);
    std::abort(); // never reached
}

void watchParent(boost::asio::io_context& context, std::function<void()> end)
{
    const HANDLE parent = ::OpenProcess(SYNCHRONIZE, FALSE, parentOfThisProcess());
    if (parent == nullptr) {
        end(); // it has gone already
        return;
    }
    auto handle = std::make_shared<boost::asio::windows::object_handle>(context, parent);
    handle->async_wait([handle, end = std::move(end)](const boost::system::error_code& failure) {
        if (!failure) {
            end();
        }
    });
}

} // namespace virtual_printer
