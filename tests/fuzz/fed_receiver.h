// The receiving side of the block protocol a second time, written from its rules as a machine that is fed
// byte by byte. It shares no code with the library's, which asks for its bytes.
#pragma once

#include "link/block_protocol.h"

#include <array>
#include <string>
#include <string_view>

namespace telvofm::fuzz {

// What the printer sends to each try before it falls silent.
using Answers = std::array<std::string_view, 3>;

class FedReceiver
{
public:
    FedReceiver(const Answers& answers, bool serial, bool strict, bool anyChecksum)
        : isSerial(serial), skipsNoise(serial && !strict), takesAnyChecksum(anyChecksum)
    {
        for (std::size_t attempt = 0; attempt < answers.size() && !isOver; ++attempt) {
            isLastTry = attempt + 1 == answers.size();
            at = At::firstAnswer;
            isNext = false;
            ++tries;
            for (std::size_t i = 0; i < answers[attempt].size() && !isOver && !isNext; ++i) {
                feed(answers[attempt][i]);
            }
            if (!isOver && !isNext) {
                fallSilent();
            }
        }
    }

    std::int32_t result = 0; // the exception's code, 0 for a reply
    std::string reply;
    std::string said; // after the questions
    std::size_t tries = 0;

private:
    enum class At
    {
        firstAnswer,
        afterNoise,
        errorCode,
        length,
        block,
        betweenBlocks,
        afterDamage
    };

    void end(std::int32_t code)
    {
        result = code;
        isOver = true;
    }

    void feed(char byte)
    {
        switch (at) {
        case At::firstAnswer:
        case At::afterNoise:
            feedAnswer(byte);
            break;
        case At::errorCode:
            feedErrorCode(byte);
            break;
        case At::length:
            missing = static_cast<unsigned char>(byte) + std::size_t{3}; // data, terminator, checksum
            block = {':', byte};
            at = At::block;
            break;
        case At::block:
            block.push_back(byte);
            if (--missing == 0) {
                judgeBlock();
            }
            break;
        case At::betweenBlocks:
            damages = 0;
            feedStartOfBlock(byte);
            break;
        case At::afterDamage:
            if (byte == ':' && damages == 3) {
                end(code::unexpectedAnswer);
            } else {
                feedStartOfBlock(byte);
            }
            break;
        }
    }

    // Over TCP a refusal ends all; on a serial line the third one does.
    void feedErrorCode(char byte)
    {
        if (isSerial && !isLastTry) {
            isNext = true;
        } else {
            end(static_cast<unsigned char>(byte));
        }
    }

    // Between blocks anything may stand; behind a damaged one nothing else.
    void feedStartOfBlock(char byte)
    {
        if (byte == ':') {
            at = At::length;
        } else if (byte == '\x04') {
            end(0);
        } else if (at == At::afterDamage) {
            end(code::unexpectedAnswer);
        }
    }

    void feedAnswer(char byte)
    {
        if (byte == ':') {
            at = At::length;
        } else if (byte == '\x15') {
            at = At::errorCode;
        } else if (byte == '\x04') {
            end(0);
        } else if (skipsNoise) {
            at = At::afterNoise;
        } else {
            end(code::unexpectedAnswer);
        }
    }

    void judgeBlock()
    {
        char sum = 0;
        for (const char byte : block) {
            sum = static_cast<char>(sum ^ byte);
        }
        const char terminator = block[block.size() - 2];
        if (sum == 0 || takesAnyChecksum) {
            reply += block.substr(2, block.size() - 4); // also with a terminator that nobody knows
            if (terminator == '\x17') {
                said += '\x06';
                at = At::betweenBlocks;
                return;
            }
            if (terminator == '\x03') {
                said += '\x03';
                return end(0);
            }
        }
        said += '\x15';
        ++damages;
        at = At::afterDamage;
    }

    void fallSilent()
    {
        if (at == At::firstAnswer && !isSerial && !isLastTry) {
            return; // costs a try
        }
        end(at == At::afterDamage && damages == 3 ? code::unexpectedAnswer : code::timeout);
    }

    bool isSerial;
    bool skipsNoise;
    bool takesAnyChecksum;
    At at = At::firstAnswer;
    std::string block;
    std::size_t missing = 0;
    int damages = 0; // of the block that is coming
    bool isLastTry = false;
    bool isNext = false; // the next try is due
    bool isOver = false;
};

} // namespace telvofm::fuzz
