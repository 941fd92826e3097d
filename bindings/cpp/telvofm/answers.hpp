// What the printer answers to the questions of a receipt, and which answers are believed: a line that damages
// a reply can leave a call with 0 and an empty text, and a connection that has shifted gives the answer of
// the call before. For telvofm::Receipt.
#pragma once

#include "session.hpp"

#include <algorithm>
#include <initializer_list>
#include <string>
#include <vector>

namespace telvofm::inside {

inline Failure noAnswer(std::string happened)
{
    return doubt("getVariableResultObject", std::move(happened));
}

// One line of text; the outcome is unknown with anything else.
inline Result<std::string> answer(Session& session, const std::string& question)
{
    Result<std::string> text = session.variable(question);
    const auto isControl = [](char character) { return static_cast<unsigned char>(character) < ' '; };
    if (text && (text->empty() || std::any_of(text->begin(), text->end(), isControl))) {
        return noAnswer("What the printer answers for " + question + " is not one line of text.");
    }
    return text;
}

// The number of the last receipt, and the answers to these questions. The number is asked for before and
// behind them, and the outcome is unknown when it is not the same then.
inline Result<std::vector<std::string>> withLastNumber(Session& session,
                                                       std::initializer_list<std::string> questions)
{
    const std::string& ofNumber = session.questions().lastReceipt;
    std::vector<std::string> asked = {ofNumber};
    asked.insert(asked.end(), questions);
    asked.push_back(ofNumber);
    std::vector<std::string> answers;
    for (const std::string& question : asked) {
        Result<std::string> text = answer(session, question);
        if (!text) {
            return text.error();
        }
        answers.push_back(*text);
    }
    if (answers.back() != answers.front()) {
        return noAnswer("The printer has two answers for " + ofNumber + ": " + answers.front() + " and " +
                        answers.back() + ".");
    }
    answers.pop_back();
    return answers;
}

} // namespace telvofm::inside
