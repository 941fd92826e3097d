// A till that is told each of its steps by told_till_test.py, with telvofm.hpp.
//
//     told_till ADDRESS
#include "telvofm.hpp"

#include <iostream>
#include <map>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace {

const char* nameOf(telvofm::Kind kind)
{
    switch (kind) {
    case telvofm::Kind::refused:
        return "Refused ";
    case telvofm::Kind::notExecuted:
        return "NotExecuted ";
    case telvofm::Kind::outcomeUnknown:
        return "OutcomeUnknown ";
    default:
        return "TelvofmError ";
    }
}

class ToldTill
{
public:
    explicit ToldTill(telvofm::Session session) : session_(std::move(session)) {}

    // What it says to a step: "done", with what it delivers behind it, or what failed.
    std::string said(const std::string& line)
    {
        std::istringstream words(line);
        std::string step, name, amount, number;
        words >> step >> name >> amount >> number;
        const telvofm::Decimal sum = telvofm::Decimal::parse(amount).value_or(0);
        if (step == "day") {
            const auto begun = session_.beginDay();
            return begun ? "done" : failed(begun.error());
        }
        if (step == "ask") {
            const auto answer = session_.variable(name);
            return answer ? "done " + *answer : failed(answer.error());
        }
        if (step == "reopen") {
            return outcome(session_.reopen());
        }
        if (step == "forget") {
            receipts_.clear();
            return "done";
        }
        if (step == "interrupted") {
            receipts_.erase(name);
            receipts_.try_emplace(name, session_.interruptedReceipt(number, sum));
            return "done";
        }
        return ofReceipt(receipts_.try_emplace(name, session_.receipt()).first->second, step, sum);
    }

private:
    static std::string failed(const telvofm::Failure& failure)
    {
        return nameOf(failure.kind) + failure.text();
    }

    static std::string outcome(const telvofm::Outcome& outcome)
    {
        return outcome ? "done" : failed(outcome.error());
    }

    static std::string ofReceipt(telvofm::Receipt& receipt, const std::string& step, telvofm::Decimal sum)
    {
        if (step == "begin") {
            return outcome(receipt.begin());
        }
        if (step == "sell") {
            return outcome(receipt.sell("Čaj", sum, "A", 1, sum, ""));
        }
        if (step == "void") {
            return outcome(receipt.takeBack("Čaj", sum, "A", 1, sum, ""));
        }
        if (step == "pay") {
            return outcome(receipt.pay(1, sum, ""));
        }
        if (step == "cancel") {
            return outcome(receipt.cancel());
        }
        if (step == "recover") {
            return "done " + receipt.recover().text();
        }
        const telvofm::Outcome ended = receipt.end();
        return ended ? "done " + receipt.number() : failed(ended.error());
    }

    telvofm::Session session_;
    std::map<std::string, telvofm::Receipt> receipts_;
};

} // namespace

int main(int, char** arguments)
{
    telvofm::Result<telvofm::Session> session = telvofm::Session::open(arguments[1]);
    if (!session) {
        std::cerr << session.error().text() << '\n';
        return 1;
    }
    ToldTill till(std::move(*session));
    for (std::string line; std::getline(std::cin, line);) {
        std::cerr << till.said(line) << std::endl; // the library writes to standard output
    }
}
