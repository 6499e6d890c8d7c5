#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vantrel::fuzz {

/// One fuzzer input read as a calculator situation. The first byte picks the frame-rate code
/// (byte % 13) and the display mode ((byte / 13) % 4), so the 52 selector bytes 0 to 51 reach
/// every pairing; the remaining bytes are the text in the input field. An empty input is the empty
/// text at 24 fps in time display.
class FuzzCase {
public:
    FuzzCase(const std::uint8_t* data, std::size_t size);

    int rateCode() const { return m_rateCode; }
    int displayMode() const { return m_displayMode; }
    std::string_view expression() const { return m_expression; }

private:
    int m_rateCode = 0;
    int m_displayMode = 0;
    std::string_view m_expression;
};

}  // namespace vantrel::fuzz
