#include "Grammar.h"

#include "GrammarMatcher.h"
#include "Regex.h"

namespace vantrel {

namespace {

void replaceOnce(std::string& text, std::string_view from, std::string_view to) {
    const auto position = text.find(from);
    if (position != std::string::npos) text.replace(position, from.size(), to);
}

constexpr std::string_view kThreeDigitFrames = R"(\d{3}(?:(?:\|119n)|(?:\|119d)|(?:\|120))|)";
constexpr std::string_view kThreeDigitFramesOptionalSuffix =
    R"(\d{3}(?:(?:\|119n)|(?:\|119d)|(?:\|120))?|)";

// Each copy is compiled on first use: most sessions never need the three-digit ones.
template <typename Compiled, Flavour flavour, FrameField field>
const Compiled& compiled() {
    static const Compiled copy(grammarText(flavour, field));
    return copy;
}

template <typename Compiled>
const Compiled& copyOf(Flavour flavour, FrameField field) {
    const bool twoDigits = field == FrameField::TwoDigits;
    if (flavour == Flavour::PT) {
        return twoDigits ? compiled<Compiled, Flavour::PT, FrameField::TwoDigits>()
                         : compiled<Compiled, Flavour::PT, FrameField::ThreeDigits>();
    }
    return twoDigits ? compiled<Compiled, Flavour::PF, FrameField::TwoDigits>()
                     : compiled<Compiled, Flavour::PF, FrameField::ThreeDigits>();
}

}  // namespace

std::string grammarText(Flavour flavour, FrameField field) {
    std::string text(kGrammarPT);
    if (flavour == Flavour::PF) {
        replaceOnce(text, "ts2PT", "ts2PF");
        replaceOnce(text, "ts1PT", "ts1PF");
    }
    if (field == FrameField::ThreeDigits) {
        replaceOnce(text, kThreeDigitFrames, kThreeDigitFramesOptionalSuffix);
    }
    return text;
}

const Regex& grammar(Flavour flavour, FrameField field) {
    return copyOf<Regex>(flavour, field);
}

const GrammarMatcher& grammarMatcher(Flavour flavour, FrameField field) {
    return copyOf<GrammarMatcher>(flavour, field);
}

}  // namespace vantrel
