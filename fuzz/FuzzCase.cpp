#include "FuzzCase.h"

#include <array>

#include "DisplayState.h"
#include "FrameRate.h"

namespace vantrel::fuzz {

namespace {

constexpr std::array<int, 4> kDisplayModes{DisplayStateTime, DisplayStateNumber,
                                           DisplayStateFilmLength, DisplayStateDiskSpace};

}  // namespace

FuzzCase::FuzzCase(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return;
    const std::size_t selector = data[0];
    m_rateCode = kFrameRates[selector % kFrameRates.size()].code;
    m_displayMode = kDisplayModes[(selector / kFrameRates.size()) % kDisplayModes.size()];
    // The engine reads the text byte by byte; char and uint8_t have the same size and alignment.
    m_expression = std::string_view(reinterpret_cast<const char*>(data + 1), size - 1);
}

}  // namespace vantrel::fuzz
