// Variables and the last receipt are logged after the call and with what came back, and only when it
// succeeded.
#include "commands/reports/variables.h"

#include "api/call_log.h"
#include "api/delivery.h"
#include "api/frame.h"
#include "api/result_objects.h"
#include "api/telvofm.h"

#include <exception>
#include <utility>

using namespace telvofm;

namespace {

// What getVariableStr has returned, kept for the caller until its thread's next call.
thread_local std::string variableText;

void logVariable(std::string_view name, int device, std::string_view variableCode, std::string_view result)
{
    logOutcome(name, "device ", device, ", variableCode ", variableCode, ", result ", result);
}

} // namespace

int getVariable(int device, const char* variableCode, char* result, int resultSize)
{
    const Text ownVariableCode(variableCode);
    return runQuery([&](Device& printer) { return reports::variable(printer, device, ownVariableCode); },
                    [&](const std::string& reply) {
                        copyText(reply, result, resultSize);
                        logVariable("getVariable ", device, ownVariableCode, reply);
                    });
}

int getVariableResultObject(int device, const char* variableCode, ResultObject* result)
{
    const Text ownVariableCode(variableCode);
    // Logged under the name of getVariable, which is meant.
    return fillResult(
        result, [&](Device& printer) { return reports::variable(printer, device, ownVariableCode); },
        [&](const std::string& reply) { logVariable("getVariable ", device, ownVariableCode, reply); });
}

const char* getVariableStr(int device, const char* variableCode)
{
    const char* text = "Error";
    try {
        const Text ownVariableCode(variableCode);
        runQuery([&](Device& printer) { return reports::variable(printer, device, ownVariableCode); },
                 [&](std::string reply) {
                     variableText = std::move(reply);
                     text = variableText.c_str();
                     logVariable("getVariableStr ", device, ownVariableCode, variableText);
                 });
    } catch (const std::exception&) {
        return "Error"; // this export throws nothing, which is meant
    }
    return text;
}

int getLastParagon(int device, char* buffer, int bufferSize)
{
    return runQuery([&](Device& printer) { return reports::lastParagon(printer, device); },
                    [&](const std::string& reply) {
                        copyBlankedWithoutTerminator(reply, buffer, bufferSize);
                        logOutcome("getLastParagon (", reply.size(), " bytes)\n", reply);
                    });
}

int getLastParagonResultObject(int device, ResultObject* result)
{
    return fillResult(
        result, [&](Device& printer) { return reports::lastParagon(printer, device); },
        [&](const std::string& reply) {
            logOutcome("getLastParagonResultObject (", reply.size(), " bytes)", reply);
        });
}

int getIntervalFPD(int device, int printType, const char* dateFrom, const char* dateTo, char* result,
                   int resultSize)
{
    const Text ownDateFrom(dateFrom);
    const Text ownDateTo(dateTo);
    logCall("getIntervalFPD ", "device ", device, ", printType ", printType, ", dateFrom ", ownDateFrom,
            ", dateTo ", ownDateTo);
    return runQuery(
        [&](Device& printer) {
            return reports::intervalByDates(printer, device, printType, ownDateFrom, ownDateTo);
        },
        [&](const std::string& reply) { copyText(reply, result, resultSize); });
}

int getIntervalFPC(int device, int printType, int numberFrom, int numberTo, char* result, int resultSize)
{
    logCall("getIntervalFPC ", "device ", device, ", printType ", printType, ", numberFrom ", numberFrom,
            ", numberTo ", numberTo);
    return runQuery(
        [&](Device& printer) {
            return reports::intervalByNumbers(printer, device, printType, numberFrom, numberTo);
        },
        [&](const std::string& reply) { copyText(reply, result, resultSize); });
}
