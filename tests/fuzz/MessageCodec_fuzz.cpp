// Any bytes, cut into lines: no line stops the reader, and a message that was read survives being written again.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "base/Fatal.h"
#include "messages/Fields.h"
#include "messages/LineReader.h"
#include "messages/MessageCodec.h"

using namespace thermopix;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    LineReader reader(256);
    reader.append({reinterpret_cast<const char*>(data), size});
    reader.append("\n");
    while (const auto line = reader.takeLine()) {
        require(line->size() <= 256, "a line is within its bounds");
        if (const auto request = MessageCodec::request(*line)) {
            require(MessageCodec::request(MessageCodec::line(*request)) == request, "a request survives its line");
        }
        if (const auto event = MessageCodec::event(*line)) {
            require(MessageCodec::event(MessageCodec::line(*event)) == event, "an event survives its line");
        }
    }
    return 0;
}
