// Variables and the last receipt are logged after the call and with what came back, and only when it
// succeeded.
#include "commands/reports/variables.h"

#include "api/call_log.h"
#include "api/delivery.h"
#include "api/frame.h"
#include "api/result_objects.h"
#include "api/telvofm.h"

using namespace telvofm;

namespace {

// What getVariableStr has returned, kept for the caller until its thread's next call.
thread_local std::string variableText;

void logVariable(const char* name, int device, const char* variableCode, std::string_view result)
{
    logCall(name, "device ", device, ", variableCode ", variableCode, ", result ", result);
}

} // namespace

int getVariable(int device, const char* variableCode, char* result, int resultSize)
{
    return runQuery([&](Device& printer) { return reports::variable(printer, device, Text(variableCode)); },
                    [&](const std::string& reply) {
                        copyText(reply, result, resultSize);
                        logVariable("getVariable ", device, variableCode, reply);
                    });
}

int getVariableResultObject(int device, const char* variableCode, ResultObject* result)
{
    // Logged under the name of getVariable, which is meant.
    return fillResult(
        result, [&](Device& printer) { return reports::variable(printer, device, Text(variableCode)); },
        [&](const std::string& reply) { logVariable("getVariable ", device, variableCode, reply); });
}

const char* getVariableStr(int device, const char* variableCode)
{
    const char* text = "Error";
    runQuery([&](Device& printer) { return reports::variable(printer, device, Text(variableCode)); },
             [&](const std::string& reply) {
                 variableText = reply;
                 text = variableText.c_str();
                 logVariable("getVariableStr ", device, variableCode, reply);
             });
    return text;
}

int getLastParagon(int device, char* buffer, int bufferSize)
{
    return runQuery([&](Device& printer) { return reports::lastParagon(printer, device); },
                    [&](const std::string& reply) {
                        copyBlankedWithoutTerminator(reply, buffer, bufferSize);
                        logCall("getLastParagon (", reply.size(), " bytes)\n", reply);
                    });
}

int getLastParagonResultObject(int device, ResultObject* result)
{
    return fillResult(
        result, [&](Device& printer) { return reports::lastParagon(printer, device); },
        [&](const std::string& reply) {
            logCall("getLastParagonResultObject (", reply.size(), " bytes)", reply);
        });
}

int getIntervalFPD(int device, int printType, const char* dateFrom, const char* dateTo, char* result,
                   int resultSize)
{
    logCall("getIntervalFPD ", "device ", device, ", printType ", printType, ", dateFrom ", dateFrom,
            ", dateTo ", dateTo);
    return runQuery(
        [&](Device& printer) {
            return reports::intervalByDates(printer, device, printType, Text(dateFrom), Text(dateTo));
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
