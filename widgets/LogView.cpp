#include "LogView.h"

#include <QMimeData>
#include <QTextDocumentFragment>

namespace vantrel {

namespace {

constexpr QChar kWordJoiner(0x2060);
constexpr QChar kZeroWidthSpace(0x200B);

bool isOperator(QChar c) {
    return c == u'+' || c == u'-' || c == u'*' || c == u'/';
}

}  // namespace

LogView::LogView(QWidget* parent) : QTextEdit(parent) {}

QString LogView::unbreakable(const QString& text) {
    QString shown;
    shown.reserve(text.size() + text.size() / 8);
    for (qsizetype i = 0; i < text.size(); ++i) {
        shown += text[i];
        const bool inWord =
            i > 0 && !text[i - 1].isSpace() && i + 1 < text.size() && !text[i + 1].isSpace();
        // Unicode would break after the bar of a rate suffix; a tidied expression has no blanks,
        // and may break between its operands instead.
        if (text[i] == u'|') shown += kWordJoiner;
        if (inWord && isOperator(text[i])) shown += kZeroWidthSpace;
    }
    return shown;
}

QString LogView::withoutJoiners(QString text) {
    return text.remove(kWordJoiner).remove(kZeroWidthSpace);
}

QMimeData* LogView::createMimeDataFromSelection() const {
    auto* copied = new QMimeData;
    copied->setText(withoutJoiners(textCursor().selection().toPlainText()));
    return copied;
}

}  // namespace vantrel
