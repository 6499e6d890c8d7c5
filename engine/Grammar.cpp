#include "Grammar.h"

#include "GrammarMatcher.h"
#include "Regex.h"

namespace vantrel {

namespace {

void replaceOnce(std::string& text, std::string_view from, std::string_view to) {
    const auto position = text.find(from);
    if (position != std::string::npos) text.replace(position, from.size(), to);
}

}  // namespace

std::string grammarText(Flavour flavour) {
    std::string text(kGrammarPT);
    if (flavour == Flavour::PF) {
        replaceOnce(text, "ts2PT", "ts2PF");
        replaceOnce(text, "ts1PT", "ts1PF");
    }
    return text;
}

const Regex& grammar(Flavour flavour) {
    static const Regex pt(grammarText(Flavour::PT));
    static const Regex pf(grammarText(Flavour::PF));
    return flavour == Flavour::PT ? pt : pf;
}

const GrammarMatcher& grammarMatcher(Flavour flavour) {
    static const GrammarMatcher pt(grammarText(Flavour::PT));
    static const GrammarMatcher pf(grammarText(Flavour::PF));
    return flavour == Flavour::PT ? pt : pf;
}

}  // namespace vantrel
