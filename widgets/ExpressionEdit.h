#pragma once

#include <QPlainTextEdit>
#include <functional>

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

    /// What a paste becomes before it is inserted; by default its line breaks become blanks.
    void setPasteFilter(std::function<QString(const QString&)> filter) {
        m_pasteFilter = std::move(filter);
    }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    void returnPressed();
    void editingEnded();
    /// The copy key with nothing selected: the user wants the result, not an empty selection.
    void copyWithoutSelection();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void insertFromMimeData(const QMimeData* source) override;
    bool event(QEvent* event) override;

private:
    std::function<QString(const QString&)> m_pasteFilter;
};

}  // namespace vantrel
