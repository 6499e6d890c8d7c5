#include "HelpWindow.h"

namespace vantrel {

HelpWindow::HelpWindow(QWidget* parent) : QTextBrowser(parent) {
    // A window of its own that goes with the calculator's, not a view inside it.
    setWindowFlag(Qt::Window);
    setWindowTitle(tr("Vantrel Help"));
    setAttribute(Qt::WA_QuitOnClose, false);
    setOpenExternalLinks(true);
    resize(760, 640);
}

void HelpWindow::showPage(const QUrl& page) {
    setSource(page);
    show();
    raise();
    activateWindow();
}

}  // namespace vantrel
