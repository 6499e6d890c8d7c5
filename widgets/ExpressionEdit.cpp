#include "ExpressionEdit.h"

#include <QKeyEvent>
#include <QMimeData>
#include <QTextBlock>
#include <QTextCursor>

namespace vantrel {

ExpressionEdit::ExpressionEdit(QWidget* parent) : QPlainTextEdit(parent) {
    setLineWrapMode(QPlainTextEdit::NoWrap);
    setWordWrapMode(QTextOption::NoWrap);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setTabChangesFocus(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    document()->setDocumentMargin(2);
}

void ExpressionEdit::setText(const QString& text) {
    setPlainText(text);
    moveCursorToEnd();
}

void ExpressionEdit::moveCursorToEnd() {
    QTextCursor cursor = textCursor();
    cursor.movePosition(QTextCursor::End);
    setTextCursor(cursor);
}

QSize ExpressionEdit::sizeHint() const {
    const int height = fontMetrics().height() + 2 * static_cast<int>(document()->documentMargin()) +
                       2 * frameWidth() + 2;
    return {200, height};
}

QSize ExpressionEdit::minimumSizeHint() const {
    return {60, sizeHint().height()};
}

bool ExpressionEdit::event(QEvent* event) {
    // The copy key is the field's own even with nothing selected, so that no menu command takes it.
    if (event->type() == QEvent::ShortcutOverride &&
        static_cast<QKeyEvent*>(event)->matches(QKeySequence::Copy)) {
        event->accept();
        return true;
    }
    return QPlainTextEdit::event(event);
}

void ExpressionEdit::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy) && !textCursor().hasSelection()) {
        emit copyWithoutSelection();
        return;
    }
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        emit returnPressed();
        // The finished expression stays readable and is replaced by the next one typed.
        selectAll();
        return;
    }
    QPlainTextEdit::keyPressEvent(event);
}

// Only a real end of editing counts: a menu or pop-up opening over the field, the menu bar taking
// the keyboard, or another window coming to the front leave the user in the middle of the text.
void ExpressionEdit::focusOutEvent(QFocusEvent* event) {
    QPlainTextEdit::focusOutEvent(event);
    switch (event->reason()) {
        case Qt::PopupFocusReason:
        case Qt::MenuBarFocusReason:
        case Qt::ActiveWindowFocusReason:
            return;
        default:
            emit editingEnded();
    }
}

// A pasted text stays on the one line: without a filter its breaks become blanks, which the
// expression language ignores around operands. One insertion, so that one undo takes it back.
void ExpressionEdit::insertFromMimeData(const QMimeData* source) {
    QString text = source->text();
    if (m_pasteFilter) {
        text = m_pasteFilter(text);
    } else {
        text.replace(QLatin1String("\r\n"), QLatin1String(" "));
        text.replace(QLatin1Char('\n'), QLatin1Char(' '));
        text.replace(QLatin1Char('\r'), QLatin1Char(' '));
    }
    // An edit block of its own: the document would otherwise merge it with the keys typed before.
    QTextCursor cursor = textCursor();
    cursor.beginEditBlock();
    cursor.insertText(text);
    cursor.endEditBlock();
}

}  // namespace vantrel
