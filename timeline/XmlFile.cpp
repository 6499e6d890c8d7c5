#include "XmlFile.h"

namespace vantrel::timeline {

XmlFile::XmlFile(std::string_view bytes, std::string_view rootName) {
    const pugi::xml_parse_result parsed = m_document.load_buffer(
        bytes.data(), bytes.size(), pugi::parse_default, pugi::encoding_auto);
    if (!parsed) {
        // An error at the very end is a file that stops before its elements close: a copy or an
        // export that did not finish.
        const bool cutShort = static_cast<std::size_t>(parsed.offset) + 16 >= bytes.size();
        m_problem = (cutShort ? "XML cut short at byte " : "not well-formed XML at byte ") +
                    std::to_string(parsed.offset) + ": " + parsed.description();
    } else if (root().name() != rootName) {
        m_problem = "an XML file whose root is <" + std::string(root().name()) + ">, not <" +
                    std::string(rootName) + ">";
    }
}

Cut XmlFile::failed(std::string format, const RateRequest& request) const {
    return unreadableCut(std::move(format), m_problem, request.code);
}

}  // namespace vantrel::timeline
