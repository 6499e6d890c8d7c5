#include "StandaloneCalcController.h"

#include <QActionGroup>
#include <QApplication>
#include <QDesktopServices>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QSystemTrayIcon>
#include <QTextEdit>

#include "FirstDrawingWatcher.h"
#include "NamedImages.h"
#include "Version.h"
#include "ui_AboutBox.h"
#include "ui_Calculator.h"

namespace vantrel {

StandaloneCalcController::StandaloneCalcController(QObject* parent)
    : QObject(parent), m_openUrl([](const QUrl& url) { return QDesktopServices::openUrl(url); }) {}

StandaloneCalcController::~StandaloneCalcController() {
    delete m_aboutBox;
}

// The about box is loaded when first asked for: building it took a fifth of the start-up.
void StandaloneCalcController::awakeFromNib() {}

QDialog* StandaloneCalcController::aboutBox() {
    if (!m_aboutBox) loadAboutBox();
    return m_aboutBox;
}

QLabel* StandaloneCalcController::versionText() {
    if (!m_aboutBox) loadAboutBox();
    return m_versionText;
}

void StandaloneCalcController::loadAboutBox() {
    m_aboutBox = new QDialog;
    Ui::AboutBox layout;
    layout.setupUi(m_aboutBox);
    m_iconLabel = layout.iconLabel;
    m_versionText = layout.versionText;
    m_versionText->setText(
        QStringLiteral("Version %1 (%2)")
            .arg(QString::fromUtf8(kShortVersion), QString::fromUtf8(kBuildVersion)));
}

void StandaloneCalcController::initialize() {
    m_calcController = std::make_unique<TSCController>();
    m_calcController->setUrlOpener(m_openUrl);
    QMainWindow* window = m_calcController->calcWindow();
    buildMenuBar(window->menuBar());
    window->resize(window->width(), static_cast<int>(TSCController::kCollapsedHeight));
    m_calcController->initialize();
    m_calcController->setPasteButtonHidden(true);
    // Drawing the application icon at every size a window manager may ask for, and the tray's
    // conversation with the desktop, take longer than anything else in showing the window.
    FirstDrawingWatcher::afterFirstDrawing(window, this, [this] {
        QApplication::setWindowIcon(applicationIcon());
        addTrayIcon();
    });
    showCalcWindow(nullptr);
    m_calcController->setDisplayModeMenu(m_displayModeMenu);
    m_calcController->setDisplayFrameRateMenu(m_displayFrameRateMenu);
    m_calcController->setDisplayCalcModeMenu(m_displayCalculationModeMenu);
    m_calcController->setTimecodeNotationItems(m_timecodeNotationItems);
    connect(qApp, &QGuiApplication::applicationStateChanged, this,
            [this](Qt::ApplicationState state) {
                if (state == Qt::ApplicationActive) applicationDidBecomeActive();
            });
}

void StandaloneCalcController::setUrlOpener(TSCController::UrlOpener opener) {
    m_openUrl = std::move(opener);
    if (m_calcController) m_calcController->setUrlOpener(m_openUrl);
}

QAction* StandaloneCalcController::addCommand(QMenu* menu, const QString& title,
                                              const QKeySequence& shortcut, Command command) {
    QAction* item = menu->addAction(title);
    item->setShortcut(shortcut);
    connect(item, &QAction::triggered, this, [this, item, command] { (this->*command)(item); });
    return item;
}

// A menu whose items each carry the value they select as their tag, checked like radio buttons.
QMenu* StandaloneCalcController::addTaggedMenu(
    QMenuBar* menuBar, const QString& title, Command command,
    const std::vector<std::tuple<QString, QKeySequence, int>>& items) {
    QMenu* menu = menuBar->addMenu(title);
    // One of many: radio items. The controller checks them itself, also none for a foreign tag.
    auto* choices = new QActionGroup(menu);
    choices->setExclusionPolicy(QActionGroup::ExclusionPolicy::ExclusiveOptional);
    for (const auto& [itemTitle, shortcut, tag] : items) {
        if (itemTitle.isEmpty()) {
            menu->addSeparator();
            continue;
        }
        QAction* item = addCommand(menu, itemTitle, shortcut, command);
        item->setProperty("tag", tag);
        item->setCheckable(true);
        choices->addAction(item);
    }
    return menu;
}

// The standard commands act on the text that has the keyboard (the input, the log, a result field),
// as that text's own keys do; the two result commands act on the result fields whatever has it.
void StandaloneCalcController::buildEditMenu(QMenuBar* menuBar) {
    QMenu* edit = menuBar->addMenu(tr("&Edit"));
    // Each command of the three kinds of text in the window: the input, the log, a result field.
    const auto onFocusedText = [edit](const QString& title, QKeySequence::StandardKey keys,
                                      auto plain, auto rich, auto line) {
        QAction* item = edit->addAction(title);
        item->setShortcut(keys);
        connect(item, &QAction::triggered, edit, [plain, rich, line] {
            QWidget* focused = QApplication::focusWidget();
            if (auto* input = qobject_cast<QPlainTextEdit*>(focused)) (input->*plain)();
            if (auto* log = qobject_cast<QTextEdit*>(focused)) (log->*rich)();
            if (auto* field = qobject_cast<QLineEdit*>(focused)) (field->*line)();
        });
    };
    onFocusedText(tr("&Undo"), QKeySequence::Undo, &QPlainTextEdit::undo, &QTextEdit::undo,
                  &QLineEdit::undo);
    onFocusedText(tr("&Redo"), QKeySequence::Redo, &QPlainTextEdit::redo, &QTextEdit::redo,
                  &QLineEdit::redo);
    edit->addSeparator();
    onFocusedText(tr("Cu&t"), QKeySequence::Cut, &QPlainTextEdit::cut, &QTextEdit::cut,
                  &QLineEdit::cut);
    onFocusedText(tr("&Copy"), QKeySequence::Copy, &QPlainTextEdit::copy, &QTextEdit::copy,
                  &QLineEdit::copy);
    onFocusedText(tr("&Paste"), QKeySequence::Paste, &QPlainTextEdit::paste, &QTextEdit::paste,
                  &QLineEdit::paste);
    onFocusedText(tr("Select &All"), QKeySequence::SelectAll, &QPlainTextEdit::selectAll,
                  &QTextEdit::selectAll, &QLineEdit::selectAll);
    edit->addSeparator();
    QAction* copyResult = edit->addAction(tr("Copy &Result"));
    copyResult->setShortcut(QKeySequence(tr("Ctrl+Shift+C")));
    connect(copyResult, &QAction::triggered, this,
            [this] { m_calcController->copyResult(nullptr); });
    QAction* copyOther = edit->addAction(tr("Copy &Other Reading"));
    copyOther->setShortcut(QKeySequence(tr("Ctrl+Alt+C")));
    connect(copyOther, &QAction::triggered, this,
            [this] { m_calcController->copyOtherReading(nullptr); });
}

void StandaloneCalcController::buildMenuBar(QMenuBar* menuBar) {
    QMenu* file = menuBar->addMenu(tr("&File"));
    QAction* openTimeline = file->addAction(tr("&Open Timeline…"));
    openTimeline->setShortcut(QKeySequence::Open);
    connect(openTimeline, &QAction::triggered, this,
            [this] { m_calcController->openTimeline(nullptr); });
    addCommand(file, tr("&Save Log…"), QKeySequence::Save, &StandaloneCalcController::saveLogFile);
    addCommand(file, tr("C&lear Log"), QKeySequence(tr("Ctrl+K")),
               &StandaloneCalcController::clearLogFile);
    addCommand(file, tr("&Reset Calculator"), QKeySequence(tr("Ctrl+Shift+Backspace")),
               &StandaloneCalcController::resetCalculator);
    file->addSeparator();
    QAction* close = file->addAction(tr("&Close Window"));
    close->setShortcut(QKeySequence::Close);
    connect(close, &QAction::triggered, this, [this] { m_calcController->calcWindow()->close(); });
    QAction* quit = file->addAction(tr("&Quit"));
    quit->setShortcut(QKeySequence(tr("Ctrl+Q")));
    connect(quit, &QAction::triggered, qApp, &QApplication::quit);
    buildEditMenu(menuBar);

    m_displayModeMenu = addTaggedMenu(
        menuBar, tr("&Display"), &StandaloneCalcController::changeDisplayMode,
        {{tr("&Time"), QKeySequence(tr("Ctrl+1")), DisplayStateTime},
         {tr("&Frame Number"), QKeySequence(tr("Ctrl+2")), DisplayStateNumber},
         {tr("&Disk Space"), QKeySequence(tr("Ctrl+3")), DisplayStateDiskSpace},
         {tr("F&ilm Length"), QKeySequence(tr("Ctrl+4")), DisplayStateFilmLength},
         {tr("F&eet+Frames"), QKeySequence(tr("Ctrl+7")), DisplayStateFeetFrames},
         {tr("Sa&mples"), QKeySequence(tr("Ctrl+8")), DisplayStateSamples},
         {tr("Re&al Time"), QKeySequence(tr("Ctrl+9")), DisplayStateRealTime},
         {tr("Rational &Seconds"), QKeySequence(tr("Ctrl+Alt+7")), DisplayStateRational},
         {tr("Premiere Tic&ks"), QKeySequence(tr("Ctrl+Alt+8")), DisplayStateTicks}});
    m_calcController->addUnitChoiceItems(m_displayModeMenu);
    m_displayModeMenu->addSeparator();
    addCommand(m_displayModeMenu, tr("Show or Hide the &Log"), QKeySequence(tr("Ctrl+L")),
               &StandaloneCalcController::toggleResultLog);
    QAction* history = m_displayModeMenu->addAction(tr("&Recent Expressions"));
    history->setShortcut(QKeySequence(tr("Ctrl+R")));
    connect(history, &QAction::triggered, this,
            [this] { m_calcController->showMenu(m_calcController->ui().historyButton); });
    addCommand(m_displayModeMenu, tr("Show &Calculator"), QKeySequence(tr("Ctrl+0")),
               &StandaloneCalcController::showCalcWindow);
    addTimecodeNotationItems(m_displayModeMenu);

    m_displayFrameRateMenu = addTaggedMenu(
        menuBar, tr("&Rate"), &StandaloneCalcController::changeDisplayFrameRate,
        {{tr("23.976 drop frame (23d)"), QKeySequence(tr("Alt+1")), DisplayState23drop},
         {tr("24"), QKeySequence(tr("Alt+2")), DisplayState24fps},
         {tr("25"), QKeySequence(tr("Alt+3")), DisplayState25fps},
         {tr("29.97 drop frame (29d)"), QKeySequence(tr("Alt+4")), DisplayState29drop},
         {tr("30"), QKeySequence(tr("Alt+5")), DisplayState30fps},
         {QString(), QKeySequence(), -1},
         {tr("23.976 (23n)"), QKeySequence(tr("Alt+6")), DisplayState23nondrop},
         {tr("29.97 (29n)"), QKeySequence(tr("Alt+7")), DisplayState29nondrop},
         {QString(), QKeySequence(), -1},
         {tr("48"), QKeySequence(tr("Ctrl+Alt+1")), DisplayState48fps},
         {tr("50"), QKeySequence(tr("Ctrl+Alt+2")), DisplayState50fps},
         {tr("59.94 drop frame (59d)"), QKeySequence(tr("Ctrl+Alt+3")), DisplayState59drop},
         {tr("60"), QKeySequence(tr("Ctrl+Alt+4")), DisplayState60fps},
         {QString(), QKeySequence(), -1},
         {tr("47.952 (47n)"), QKeySequence(tr("Ctrl+Alt+5")), DisplayState47nondrop},
         {tr("59.94 (59n)"), QKeySequence(tr("Ctrl+Alt+6")), DisplayState59nondrop},
         {QString(), QKeySequence(), -1},
         {tr("72"), QKeySequence(tr("Alt+Shift+1")), DisplayState72fps},
         {tr("95.904 (95n)"), QKeySequence(tr("Alt+Shift+2")), DisplayState95nondrop},
         {tr("96"), QKeySequence(tr("Alt+Shift+3")), DisplayState96fps},
         {tr("100"), QKeySequence(tr("Alt+Shift+4")), DisplayState100fps},
         {tr("119.88 drop frame (119d)"), QKeySequence(tr("Alt+Shift+5")), DisplayState119drop},
         {tr("119.88 (119n)"), QKeySequence(tr("Alt+Shift+6")), DisplayState119nondrop},
         {tr("120"), QKeySequence(tr("Alt+Shift+7")), DisplayState120fps}});

    m_displayCalculationModeMenu =
        addTaggedMenu(menuBar, tr("&Mode"), &StandaloneCalcController::changeDisplayCalcMode,
                      {{tr("PT: Suffixes as &Time"), QKeySequence(tr("Ctrl+T")), 1},
                       {tr("PF: Suffixes as &Frames"), QKeySequence(tr("Ctrl+F")), 0}});

    // Until the first change the menus show the start-up choices: time, 24 fps, PT.
    for (QMenu* menu : {m_displayModeMenu.data(), m_displayFrameRateMenu.data(),
                        m_displayCalculationModeMenu.data()}) {
        const int startTag = menu == m_displayCalculationModeMenu ? 1 : 0;
        for (QAction* item : menu->actions()) {
            if (item->isCheckable()) item->setChecked(item->property("tag").toInt() == startTag);
        }
    }

    QMenu* help = menuBar->addMenu(tr("&Help"));
    addCommand(help, tr("Vantrel &Help"), QKeySequence::HelpContents,
               &StandaloneCalcController::showHelpInWebBrowser);
    QAction* expressions = help->addAction(tr("&Expression Help"));
    expressions->setShortcut(QKeySequence(tr("Shift+F1")));
    connect(expressions, &QAction::triggered, this,
            [this, expressions] { m_calcController->openExpressionHelp(expressions); });
    addCommand(help, tr("Glessik &Website"), QKeySequence(),
               &StandaloneCalcController::visitHomepage);
    help->addSeparator();
    addCommand(help, tr("&About Vantrel"), QKeySequence(), &StandaloneCalcController::showAboutBox);
}

// Tagged 0 and 1 like the other choices, but in a group of their own: they choose how timecodes
// are written, not what the results show.
void StandaloneCalcController::addTimecodeNotationItems(QMenu* menu) {
    menu->addSeparator();
    auto* group = new QActionGroup(menu);
    const QString titles[] = {tr("Classic Notation (00:00:00.00)"),
                              tr("SMPTE Notation (00:00:00:00)")};
    const QKeySequence shortcuts[] = {QKeySequence(tr("Ctrl+5")), QKeySequence(tr("Ctrl+6"))};
    for (int tag = 0; tag < 2; ++tag) {
        QAction* item = addCommand(menu, titles[tag], shortcuts[tag],
                                   &StandaloneCalcController::changeTimecodeNotation);
        item->setProperty("tag", tag);
        item->setCheckable(true);
        group->addAction(item);
        m_timecodeNotationItems << item;
    }
}

void StandaloneCalcController::addTrayIcon() {
    if (!QSystemTrayIcon::isSystemTrayAvailable()) return;
    m_trayIcon = new QSystemTrayIcon(applicationIcon(), this);
    m_trayIcon->setToolTip(tr("Vantrel"));
    auto* menu = new QMenu;
    connect(m_trayIcon, &QObject::destroyed, menu, &QObject::deleteLater);
    QAction* show = menu->addAction(tr("Show Vantrel"));
    connect(show, &QAction::triggered, this, [this] { showCalcWindow(nullptr); });
    QAction* quit = menu->addAction(tr("Quit"));
    connect(quit, &QAction::triggered, qApp, &QApplication::quit);
    m_trayIcon->setContextMenu(menu);
    connect(m_trayIcon, &QSystemTrayIcon::activated, this,
            [this](QSystemTrayIcon::ActivationReason reason) {
                if (reason == QSystemTrayIcon::Trigger) showCalcWindow(nullptr);
            });
    m_trayIcon->show();
}

// Whatever way the desktop activates Vantrel (its window in a task list, a second start, the
// tray), the calculator comes to the front; a dialog, the about box or the help window that the
// user brought forward keeps its place.
void StandaloneCalcController::applicationDidBecomeActive() {
    const QWidget* active = QApplication::activeWindow();
    if (QApplication::activeModalWidget()) return;
    if (active && active != m_calcController->calcWindow()) return;
    showCalcWindow(nullptr);
}

void StandaloneCalcController::showCalcWindow(QObject*) {
    QMainWindow* window = m_calcController->calcWindow();
    window->show();
    window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
    window->raise();
    window->activateWindow();
}

void StandaloneCalcController::changeDisplayMode(QObject* sender) {
    m_calcController->changeDisplayMode(sender);
}

void StandaloneCalcController::changeDisplayFrameRate(QObject* sender) {
    m_calcController->changeDisplayFrameRate(sender);
}

void StandaloneCalcController::changeDisplayCalcMode(QObject* sender) {
    m_calcController->toggleCalcMode(sender);
}

void StandaloneCalcController::changeTimecodeNotation(QObject* sender) {
    m_calcController->changeTimecodeNotation(sender);
}

void StandaloneCalcController::toggleResultLog(QObject* sender) {
    m_calcController->changeWindow(sender);
}

void StandaloneCalcController::saveLogFile(QObject* sender) {
    m_calcController->saveLogFile(sender);
}

void StandaloneCalcController::clearLogFile(QObject* sender) {
    m_calcController->clearLog(sender);
}

void StandaloneCalcController::resetCalculator(QObject* sender) {
    m_calcController->reset(sender);
}

void StandaloneCalcController::showAboutBox(QObject*) {
    QDialog* box = aboutBox();
    // Drawn on first showing: rendering the icon would otherwise lengthen every start.
    if (m_iconLabel->pixmap().isNull()) {
        m_iconLabel->setPixmap(applicationIcon().pixmap(64, 64));
    }
    box->show();
    box->raise();
    box->activateWindow();
}

void StandaloneCalcController::showHelpInWebBrowser(QObject*) {
    m_calcController->showHelp();
}

void StandaloneCalcController::visitHomepage(QObject*) {
    if (!m_openUrl(QUrl(QString::fromLatin1(kHomepage)))) QApplication::beep();
}

}  // namespace vantrel
