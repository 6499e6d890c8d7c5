#pragma once

#include <pugixml.hpp>
#include <string>
#include <string_view>

#include "Cut.h"
#include "RateChoice.h"

namespace vantrel::timeline {

/// An XML timeline file read through pugixml, with its root element checked: a file that is no
/// XML, is cut short or has another root says so in one sentence.
class XmlFile {
public:
    XmlFile(std::string_view bytes, std::string_view rootName);

    pugi::xml_node root() const { return m_document.document_element(); }
    /// Why the file cannot be read as such a file, or empty.
    const std::string& problem() const { return m_problem; }
    /// A cut of no events that says why.
    Cut failed(std::string format, const RateRequest& request) const;

private:
    pugi::xml_document m_document;
    std::string m_problem;
};

}  // namespace vantrel::timeline
