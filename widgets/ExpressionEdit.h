#pragma once

#include <QPlainTextEdit>

namespace vantrel {

/// A one-line expression field that can carry colours without touching the text: a plain-text
/// editor held to a single line, so a QSyntaxHighlighter can colour it while the text, the cursor
/// and the undo history stay the user's.
///
/// Return emits returnPressed() and selects the text; handing the focus to another control of the
/// window emits editingEnded(), while a menu, a pop-up or another window does not. Unlike
/// QLineEdit, which sends its end-of-editing signal on Return as well, this keeps "finish" and
/// "end of editing" apart.
class ExpressionEdit : public QPlainTextEdit {
    Q_OBJECT

public:
    explicit ExpressionEdit(QWidget* parent = nullptr);

    QString text() const { return toPlainText(); }
    void setText(const QString& text);
    /// Puts the insertion point after the last character, with nothing selected.
    void moveCursorToEnd();

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    void returnPressed();
    void editingEnded();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void insertFromMimeData(const QMimeData* source) override;
};

}  // namespace vantrel
