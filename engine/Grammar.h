#pragma once

#include <string>
#include <string_view>

namespace vantrel {

class GrammarMatcher;
class Regex;

/// The expression language, as a Ruby-syntax pattern with subexpression calls and capture history.
///
/// Five definitions (tss: sum, tsm: product with one timestamp factor, zm: product of scalars,
/// ts: timestamp operand, z: scalar operand) are called from the first \g<tss>. The history groups
/// (tss1, tss2, tsm1, tsm2, tsm3, zm1, zm2 for operations; ts1PT, ts2PT, z2 for operands) form the
/// capture tree that the evaluator walks. This is the PT copy; the PF copy differs only in the
/// names of the two timestamp groups, which tell the evaluator how to read a rate suffix.
///
/// A frame field has one or two digits, or three before the suffix of a rate of 120 labels a
/// second ("00:00:00.119|120"). The copies for such a current rate also take three digits without
/// a suffix; they differ from the others in one "?" after that suffix list.
inline constexpr std::string_view kGrammarPT =
    R"grammar(\g<tss>(?<tss>(\g<tsm>(?:(?@<tss1>\+(\g<tsm>|\g<zm>))|(?@<tss2>\-(\g<tsm>|\g<zm>)))*)|(\g<zm>(?:(?@<tss1>\+(\g<tsm>|\g<zm>))|(?@<tss2>\-(\g<tsm>|\g<zm>)))*)){0}(?<tsm>(\g<z>(?@<tsm1>(?@<tsm2>\*\g<z>)*\*\g<ts>(?@<tsm2>\*\g<z>)*))|(\g<ts>(?:(?@<tsm2>\*\g<z>)|(?@<tsm3>/\g<z>))*)){0}(?<zm>\g<z>(?:(?@<zm1>\*\g<z>)|(?@<zm2>/\g<z>))*){0}(?<ts>(\s*\(\g<tss>\)\s*)|(?@<ts2PT>(\s*0*(?:(?:\d{0,2}:)?\d{0,2})?:\d{1,2}(?:\.(?:\d{3}(?:(?:\|119n)|(?:\|119d)|(?:\|120))|\d{1,2}(?:(?:\|24)|(?:\|25)|(?:\|30)|(?:\|23d)|(?:\|29d)|(?:\|23n)|(?:\|29n)|(?:\|48)|(?:\|50)|(?:\|60)|(?:\|59d)|(?:\|47n)|(?:\|59n)|(?:\|72)|(?:\|96)|(?:\|95n)|(?:\|100)|(?:\|119n)|(?:\|119d)|(?:\|120))?))?)\s*|(\s*[123456789]{1,1}\d+(?:(?:\|24)|(?:\|25)|(?:\|30)|(?:\|23d)|(?:\|29d)|(?:\|23n)|(?:\|29n)|(?:\|48)|(?:\|50)|(?:\|60)|(?:\|59d)|(?:\|47n)|(?:\|59n)|(?:\|72)|(?:\|96)|(?:\|95n)|(?:\|100)|(?:\|119n)|(?:\|119d)|(?:\|120)){1,1})\s*)|(?@<ts1PT>\s*0\d{1,8}(?:(?:\|24)|(?:\|25)|(?:\|30)|(?:\|23d)|(?:\|29d)|(?:\|23n)|(?:\|29n)|(?:\|48)|(?:\|50)|(?:\|60)|(?:\|59d)|(?:\|47n)|(?:\|59n)|(?:\|72)|(?:\|96)|(?:\|95n)|(?:\|100)|(?:\|119n)|(?:\|119d)|(?:\|120))?)\s*){0}(?<z>\(\g<tss>\)|(?@<z2>\s*[123456789]{1}\d*(?:\.\d*)?\s*)){0})grammar";

enum class Flavour { PT, PF };

/// How many digits a frame field without a rate suffix may have: two, or three at the rates whose
/// frame labels reach 100.
enum class FrameField { TwoDigits, ThreeDigits };

/// The grammar text of a flavour.
std::string grammarText(Flavour flavour, FrameField field = FrameField::TwoDigits);

/// The grammar compiled by Oniguruma, once for the whole process. The engine matches with
/// grammarMatcher(); this one is the reference that the tests compare it with.
const Regex& grammar(Flavour flavour, FrameField field = FrameField::TwoDigits);

/// The grammar read by the grammar matcher, once for the whole process.
const GrammarMatcher& grammarMatcher(Flavour flavour, FrameField field = FrameField::TwoDigits);

}  // namespace vantrel
