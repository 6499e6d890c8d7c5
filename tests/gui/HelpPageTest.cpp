#include <gtest/gtest.h>

#include <QFile>
#include <QRegularExpression>
#include <QTest>
#include <QTextDocumentFragment>

#include "Calc.h"
#include "FrameRate.h"
#include "HelpWindow.h"
#include "Units.h"

namespace {

using namespace vantrel;

const QString kPage = QStringLiteral(QT_TESTCASE_SOURCEDIR
                                     "/../resources/help/Glessik Vantrel Help/Vantrel Help.html");

QString section(const QString& id) {
    QFile file(kPage);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    const QString html = QString::fromUtf8(file.readAll());
    const auto start = html.indexOf(QStringLiteral("<section id=\"%1\">").arg(id));
    return html.mid(start, html.indexOf(QStringLiteral("</section>"), start) - start);
}

QString plain(const QString& html) {
    return QTextDocumentFragment::fromHtml(html).toPlainText().trimmed();
}

// The cells of every row of the section's tables, as HTML.
QList<QStringList> rows(const QString& html) {
    static const QRegularExpression row(QStringLiteral("<tr>(.*?)</tr>"));
    static const QRegularExpression cell(QStringLiteral("<td[^>]*>(.*?)</td>"));
    QList<QStringList> found;
    for (auto r = row.globalMatch(html); r.hasNext();) {
        QStringList cells;
        const QString tr = r.next().captured(0);
        for (auto c = cell.globalMatch(tr); c.hasNext();) cells << c.next().captured(0);
        if (!cells.isEmpty()) found << cells;
    }
    return found;
}

QString firstCode(const QString& cellHtml) {
    static const QRegularExpression code(QStringLiteral("<code>(.*?)</code>"));
    return plain(code.match(cellHtml).captured(1));
}

std::string result(std::optional<std::string> text) {
    return text.value_or("none");
}

// Every example of the expression language's tables, typed at 25 fps in the time display, gives
// what the table says; what the table calls not accepted has no result, and what it offers
// instead gives its result.
TEST(HelpPage, ExpressionTablesAreTrue) {
    Calc calc;
    calc.setFps(DisplayState25fps);
    int checked = 0;
    for (const QStringList& cells : rows(section(QStringLiteral("expressions")))) {
        const std::string typed = firstCode(cells[0]).toStdString();
        const std::string pt = result(calc.evalPT(typed, DisplayStateTime));
        const std::string pf = result(calc.evalPF(typed, DisplayStateTime));
        QStringList results;
        for (const QString& cell : cells) {
            if (cell.contains(QStringLiteral("class=\"res\""))) results << plain(cell);
        }
        if (cells.size() == 4 && results.isEmpty()) {
            // What is not accepted, and what to write instead.
            EXPECT_EQ(pt, "none") << typed;
            static const QRegularExpression shown(
                QStringLiteral("→ <span class=\"mono\">([^<]*)</span>"));
            const auto match = shown.match(cells[3]);
            if (match.hasMatch()) {
                EXPECT_EQ(result(calc.evalPT(firstCode(cells[3]).toStdString(), DisplayStateTime)),
                          match.captured(1).toStdString());
            }
        } else if (results.size() == 2) {
            EXPECT_EQ(pt + " " + pf, results[0].toStdString() + " " + results[1].toStdString())
                << typed;
        } else if (results.isEmpty()) {
            ADD_FAILURE() << "no result in the row of " << typed;
        } else if (results[0].startsWith(QStringLiteral("PT "))) {
            EXPECT_EQ("PT " + pt + ", PF " + pf, results[0].toStdString()) << typed;
        } else {
            EXPECT_EQ(pt + " " + pf, results[0].toStdString() + " " + results[0].toStdString())
                << typed;
        }
        ++checked;
    }
    EXPECT_GT(checked, 50);
}

// The rate table's frame counts of an hour, and the unit table's readings of an hour at 23.976.
TEST(HelpPage, RateAndUnitTablesAreTrue) {
    Calc calc;
    int checked = 0;
    for (const QStringList& cells : rows(section(QStringLiteral("rates")))) {
        if (cells.size() != 5) continue;
        ++checked;
        const FrameRate* rate = frameRateForSuffix(firstCode(cells[1]).mid(1).toStdString());
        ASSERT_TRUE(rate) << plain(cells[1]).toStdString();
        calc.setFps(rate->code);
        EXPECT_EQ(result(calc.evalPT("01:00:00.00", DisplayStateNumber)),
                  plain(cells[4]).remove(',').toStdString())
            << rate->suffix;
    }
    calc.setFps(DisplayState23nondrop);
    const units::UnitChoice choice;
    const std::map<QString, int> displays{{"Feet+Frames", DisplayStateFeetFrames},
                                          {"Samples", DisplayStateSamples},
                                          {"Real Time", DisplayStateRealTime},
                                          {"Rational Seconds", DisplayStateRational},
                                          {"Premiere Ticks", DisplayStateTicks}};
    for (const QStringList& cells : rows(section(QStringLiteral("units")))) {
        if (!displays.contains(plain(cells[0]))) continue;
        ++checked;
        EXPECT_EQ(result(units::evaluated(calc, "01:00:00:00", Flavour::PT, false,
                                          displays.at(plain(cells[0])), choice)),
                  firstCode(cells[2]).toStdString());
    }
    EXPECT_EQ(checked, 20 + 5);
}

// The help window closes with Esc and with the close key, as a help viewer does.
TEST(HelpPage, WindowClosesWithEscapeAndCtrlW) {
    for (const auto& [key, modifiers] :
         {std::pair{Qt::Key_Escape, Qt::NoModifier}, {Qt::Key_W, Qt::ControlModifier}}) {
        HelpWindow window;
        window.showPage(QUrl::fromLocalFile(kPage));
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        QTest::keyClick(&window, key, modifiers);
        EXPECT_FALSE(window.isVisible()) << key;
    }
}

}  // namespace
