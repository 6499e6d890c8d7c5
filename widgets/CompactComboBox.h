#pragma once

#include <QComboBox>

namespace vantrel {

/// A pop-up button whose list shows each item's full caption ("29.97 drop frame (29d)") while the
/// closed button shows a compact one ("29.97 DF"), so a narrow button never cuts a caption off.
/// The button is as wide as its longest compact caption needs; an item without one shows its
/// full caption.
class CompactComboBox : public QComboBox {
    Q_OBJECT

public:
    static constexpr int kCompactCaptionRole = Qt::UserRole + 1;

    explicit CompactComboBox(QWidget* parent = nullptr);

    /// The text the closed button shows for the item at the position.
    QString compactCaption(int position) const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    /// The list opens wide enough for its longest full caption, however narrow the button is.
    void showPopup() override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QSize sizeForCaptions() const;
};

}  // namespace vantrel
