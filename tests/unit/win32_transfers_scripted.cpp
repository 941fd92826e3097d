// Overlapped reads and writes, their events and the time that passes meanwhile.
#include "tests/unit/win32_scripted_call.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace telvofm::test {
namespace {

void finish(OVERLAPPED* overlapped, Operation& operation)
{
    operation.isDone = true;
    operation.moved = std::min(operation.wanted, static_cast<DWORD>(operation.transfer.bytes.size()));
    if (operation.target != nullptr) {
        std::copy_n(operation.transfer.bytes.begin(), operation.moved, operation.target);
    }
    ::SetEvent(overlapped->hEvent);
}

BOOL start(OVERLAPPED* overlapped, Operation operation)
{
    const auto event = playing()->events.find(overlapped->hEvent);
    if (event == playing()->events.end() || !event->second || playing()->operations.contains(overlapped)) {
        ADD_FAILURE() << "an operation needs an event of its own that is reset by hand";
        return failed(ERROR_INVALID_PARAMETER);
    }
    if (operation.transfer.course == Transfer::Course::refused) {
        return failed(operation.transfer.error);
    }
    const bool isDone = operation.transfer.course == Transfer::Course::atOnce;
    Operation& kept = playing()->operations[overlapped] = std::move(operation);
    if (isDone) {
        finish(overlapped, kept);
        return succeeded();
    }
    return failed(ERROR_IO_PENDING);
}

Transfer next(std::deque<Transfer>& transfers, Transfer otherwise)
{
    if (transfers.empty()) {
        return otherwise;
    }
    Transfer first = std::move(transfers.front());
    transfers.pop_front();
    return first;
}

BOOL WINAPI clearCommError(HANDLE port, DWORD* errors, COMSTAT* status)
{
    if (!begin(port, "ClearCommError")) {
        return FALSE;
    }
    *errors = CE_FRAME; // noise on the line is no failure
    *status = {};
    status->cbInQue = playing()->queued;
    return succeeded();
}

BOOL WINAPI readFile(HANDLE handle, void* target, DWORD count, DWORD* moved, OVERLAPPED* overlapped)
{
    static decltype(&::ReadFile) system;
    if (!isPort(handle)) {
        return original(system, "ReadFile")(handle, target, count, moved, overlapped);
    }
    if (!begin(handle, "ReadFile", std::to_string(count))) {
        return FALSE;
    }
    return start(overlapped, {.port = handle,
                              .target = static_cast<char*>(target),
                              .wanted = count,
                              .transfer = next(playing()->reads, {Transfer::Course::silent, {}})});
}

BOOL WINAPI writeFile(HANDLE handle, const void* bytes, DWORD count, DWORD* moved, OVERLAPPED* overlapped)
{
    static decltype(&::WriteFile) system;
    if (!isPort(handle)) {
        return original(system, "WriteFile")(handle, bytes, count, moved, overlapped);
    }
    if (!begin(handle, "WriteFile", std::to_string(count))) {
        return FALSE;
    }
    std::string given(static_cast<const char*>(bytes), count);
    playing()->written += given;
    return start(overlapped, {.port = handle,
                              .target = nullptr,
                              .wanted = count,
                              .transfer = next(playing()->writes, {Transfer::Course::waitedFor, given})});
}

BOOL WINAPI getOverlappedResult(HANDLE handle, OVERLAPPED* overlapped, DWORD* moved, BOOL waits)
{
    static decltype(&::GetOverlappedResult) system;
    if (!isPort(handle)) {
        return original(system, "GetOverlappedResult")(handle, overlapped, moved, waits);
    }
    const auto found = playing()->operations.find(overlapped);
    if (!begin(handle, "GetOverlappedResult", waits != 0 ? "waiting" : "") ||
        found == playing()->operations.end()) {
        return FALSE;
    }
    Operation& operation = found->second;
    if (!operation.isDone && waits == 0) {
        return failed(ERROR_IO_INCOMPLETE);
    }
    const Transfer::Course course = operation.transfer.course;
    if (!operation.isDone && !(operation.isCancelled && course != Transfer::Course::late)) {
        EXPECT_NE(course, Transfer::Course::silent) << "waits for ever";
        finish(overlapped, operation);
    }
    const bool wasCancelled = !operation.isDone;
    const DWORD error = operation.transfer.error;
    *moved = operation.moved;
    playing()->operations.erase(found);
    if (wasCancelled) {
        return failed(ERROR_OPERATION_ABORTED);
    }
    return error != 0 ? failed(error) : succeeded();
}

BOOL WINAPI cancelIo(HANDLE port)
{
    if (!begin(port, "CancelIo")) {
        return FALSE;
    }
    for (auto& [overlapped, operation] : playing()->operations) {
        operation.isCancelled = operation.port == port;
    }
    return succeeded();
}

HANDLE WINAPI createEvent(SECURITY_ATTRIBUTES* security, BOOL isManual, BOOL isSet, const char* name)
{
    static decltype(&::CreateEventA) system;
    if (playing() != nullptr && fails("CreateEventA")) {
        return nullptr;
    }
    const HANDLE created = original(system, "CreateEventA")(security, isManual, isSet, name);
    if (playing() != nullptr) {
        playing()->events[created] = isManual != 0 && isSet == 0;
    }
    return created;
}

// Only operations are waited for in the script; their waits take no time.
DWORD WINAPI waitForSingleObject(HANDLE handle, DWORD limit)
{
    static decltype(&::WaitForSingleObject) system;
    const auto isWaitedFor = [&](const auto& entry) { return entry.first->hEvent == handle; };
    if (playing() == nullptr || std::ranges::none_of(playing()->operations, isWaitedFor)) {
        return original(system, "WaitForSingleObject")(handle, limit);
    }
    playing()->calls.push_back("WaitForSingleObject " + std::to_string(limit));
    if (fails("WaitForSingleObject")) {
        return WAIT_FAILED;
    }
    auto& [overlapped, operation] = *std::ranges::find_if(playing()->operations, isWaitedFor);
    const Transfer::Course course = operation.transfer.course;
    if (course == Transfer::Course::waitedFor || course == Transfer::Course::broken) {
        finish(overlapped, operation);
    }
    if (operation.isDone) {
        return WAIT_OBJECT_0;
    }
    playing()->clock += limit;
    return WAIT_TIMEOUT;
}

ULONGLONG WINAPI getTickCount64()
{
    static decltype(&::GetTickCount64) system;
    return playing() != nullptr ? playing()->clock : original(system, "GetTickCount64")();
}

// To give way to other threads is no rest.
void WINAPI sleep(DWORD time)
{
    static decltype(&::Sleep) system;
    if (playing() == nullptr || time == 0) {
        original(system, "Sleep")(time);
        return;
    }
    playing()->calls.push_back("Sleep " + std::to_string(time));
    playing()->clock += time;
}

} // namespace
} // namespace telvofm::test

// The pointers through which the library calls them; without ours the system's import library has them.
extern "C" {
decltype(&::ClearCommError) __imp_ClearCommError = telvofm::test::clearCommError;
decltype(&::ReadFile) __imp_ReadFile = telvofm::test::readFile;
decltype(&::WriteFile) __imp_WriteFile = telvofm::test::writeFile;
decltype(&::GetOverlappedResult) __imp_GetOverlappedResult = telvofm::test::getOverlappedResult;
decltype(&::CancelIo) __imp_CancelIo = telvofm::test::cancelIo;
decltype(&::CreateEventA) __imp_CreateEventA = telvofm::test::createEvent;
decltype(&::WaitForSingleObject) __imp_WaitForSingleObject = telvofm::test::waitForSingleObject;
decltype(&::GetTickCount64) __imp_GetTickCount64 = telvofm::test::getTickCount64;
decltype(&::Sleep) __imp_Sleep = telvofm::test::sleep;
}
