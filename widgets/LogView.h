#pragma once

#include <QString>
#include <QTextEdit>

namespace vantrel {

/// The result log. Long lines wrap at blanks, and a tidied expression, which has none, between its
/// operands; a timecode with its rate suffix ("01:00:10.00|24") is never split, although the
/// Unicode rules would break after its "|". The view keeps a word joiner (U+2060) after each "|"
/// and a zero-width space after each operator inside a word in what it shows; what it gives away
/// (a copy, a drag, the text to save) has neither.
class LogView : public QTextEdit {
    Q_OBJECT

public:
    explicit LogView(QWidget* parent = nullptr);

    /// The text as the view shows it, with its marks where a line must not or may break.
    static QString unbreakable(const QString& text);
    /// The text without the view's marks.
    static QString withoutJoiners(QString text);

protected:
    QMimeData* createMimeDataFromSelection() const override;
};

}  // namespace vantrel
