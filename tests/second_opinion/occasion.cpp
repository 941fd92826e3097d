#include "tests/second_opinion/occasion.h"

#include <algorithm>
#include <utility>

namespace telvofm::test {
namespace {

// The printer on a terminal finds the end of a request by it.
std::string withoutRequestEnd(std::string text)
{
    std::replace(text.begin(), text.end(), '\x04', '\x05');
    return text;
}

} // namespace

int Occasion::drawn(std::string_view name, int* /*type*/)
{
    int value = draw.whole();
    if (name == "device" || name == "deviceNumber") {
        value = draw.oneIn(4) ? value : draw.between(0, 255);
    } else if (name == "bufferSize" || name == "resultSize" || name == "imageDataByteSize" ||
               name == "imageCount") {
        value = size;
    } else if (name == "imageIndex" || name == "imageNumber") {
        value = draw.oneIn(20) ? value : draw.between(0, 9);
    } else if (name.find("Pay") != std::string_view::npos || name == "inverse") {
        value = draw.oneIn(3) ? value : draw.between(-1, 2);
    }
    record.argument(std::to_string(value));
    return value;
}

std::int16_t Occasion::drawn(std::string_view /*name*/, std::int16_t* /*type*/)
{
    const auto value = static_cast<std::int16_t>(draw.whole());
    record.argument(std::to_string(value));
    return value;
}

std::uint32_t Occasion::drawn(std::string_view /*name*/, std::uint32_t* /*type*/)
{
    record.argument(std::to_string(setting));
    return setting;
}

std::int64_t Occasion::drawn(std::string_view name, std::int64_t* /*type*/)
{
    const std::int64_t value = name == "count" ? size : static_cast<std::int64_t>(draw.below(~0ULL));
    record.argument(std::to_string(value));
    return value;
}

double Occasion::drawn(std::string_view /*name*/, double* /*type*/)
{
    const double value = draw.number();
    record.argument(jsonBits(value));
    return value;
}

char Occasion::drawn(std::string_view /*name*/, char* /*type*/)
{
    char value = draw.character();
    if (isSerial && value == '\x04') {
        value = '\x05';
    }
    record.argument(std::to_string(static_cast<unsigned char>(value)));
    return value;
}

unsigned char Occasion::drawn(std::string_view /*name*/, unsigned char* /*type*/)
{
    const auto value = draw.oneOf<unsigned char>({0, 0, 1, 1, 2, 128, 255});
    record.argument(std::to_string(value));
    return value;
}

const char* Occasion::kept(std::string text)
{
    texts.push_back(std::move(text));
    record.argument(jsonBytes(std::string_view(texts.back())));
    return texts.back().c_str();
}

const char* Occasion::drawn(std::string_view name, const char** /*type*/)
{
    if (name == "portName") {
        return kept(port);
    }
    if (name == "path" || name == "fileName" || name == "journalFile") {
        return kept(path);
    }
    if (name == "data") {
        return kept(data);
    }
    if (draw.oneIn(50)) { // counts as empty
        record.argument("null");
        return nullptr;
    }
    return kept(isSerial ? withoutRequestEnd(draw.text()) : draw.text());
}

const unsigned char* Occasion::drawn(std::string_view /*name*/, const unsigned char** /*type*/)
{
    record.argument(hasData ? jsonBytes(std::string_view(data)) : "null");
    return hasData ? reinterpret_cast<const unsigned char*>(data.data()) : nullptr;
}

const void* Occasion::drawn(std::string_view name, const void** /*type*/)
{
    if (name == "marker") {
        record.argument(hasMarker ? "1" : "null");
        return hasMarker ? &output : nullptr;
    }
    record.argument(hasData ? jsonBytes(std::string_view(data)) : "null");
    return hasData ? data.data() : nullptr;
}

char* Occasion::drawn(std::string_view /*name*/, char** /*type*/)
{
    record.argument("0");
    return output.buffer.data();
}

unsigned char* Occasion::drawn(std::string_view /*name*/, unsigned char** /*type*/)
{
    record.argument(hasData ? "0" : "null");
    return hasData ? reinterpret_cast<unsigned char*>(output.buffer.data()) : nullptr;
}

unsigned int* Occasion::drawn(std::string_view /*name*/, unsigned int** /*type*/)
{
    record.argument("0");
    return &output.count;
}

ResultObject* Occasion::drawn(std::string_view /*name*/, ResultObject** /*type*/)
{
    record.argument(object == -1 ? "null" : std::to_string(object));
    return resultObject;
}

const ResultObject* Occasion::drawn(std::string_view name, const ResultObject** /*type*/)
{
    return drawn(name, static_cast<ResultObject**>(nullptr));
}

} // namespace telvofm::test
