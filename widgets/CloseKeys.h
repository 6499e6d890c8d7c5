#pragma once

#include <QKeySequence>
#include <QList>

namespace vantrel {

/// The keys that close a document window: the desktop's own, and Ctrl+W where that is another
/// (some platform themes close with Ctrl+F4 alone).
inline QList<QKeySequence> closeWindowKeys() {
    QList<QKeySequence> keys = QKeySequence::keyBindings(QKeySequence::Close);
    const QKeySequence ctrlW(Qt::CTRL | Qt::Key_W);
    if (!keys.contains(ctrlW)) keys << ctrlW;
    return keys;
}

}  // namespace vantrel
