#pragma once

#include <QDialog>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QObject>
#include <QPointer>
#include <QSystemTrayIcon>
#include <QUrl>
#include <functional>
#include <memory>

#include "TSCController.h"

namespace vantrel {

/// The application: creates the one calculator window, gives it its menu bar, and answers the
/// menu commands, forwarding nearly all of them to the calculator's controller.
///
/// Closing the window does not quit; the window comes back when Vantrel is started again (see
/// SingleInstance) or from the tray icon, and Quit in the File menu ends the program.
class StandaloneCalcController : public QObject {
    Q_OBJECT

public:
    static constexpr const char* kHomepage = "https://glessik.com/vantrel/";

    explicit StandaloneCalcController(QObject* parent = nullptr);
    ~StandaloneCalcController() override;

    /// Nothing to do before the first start: the about box comes with its first use.
    void awakeFromNib();
    /// Creates the controller and its window, shows it and hands the menus over.
    void initialize();

    TSCController* calcController() const { return m_calcController.get(); }
    /// The about box, loaded with its version line, "Version 0.1.0 (42)", when first asked for.
    QDialog* aboutBox();
    QLabel* versionText();
    QMenu* displayModeMenu() const { return m_displayModeMenu; }
    QMenu* displayFrameRateMenu() const { return m_displayFrameRateMenu; }
    QMenu* displayCalculationModeMenu() const { return m_displayCalculationModeMenu; }

    /// How pages are opened in the desktop's browser; replaceable so tests open nothing.
    void setUrlOpener(TSCController::UrlOpener opener);
    bool validateMenuItem(QAction*) const { return true; }

public slots:
    void applicationDidBecomeActive();
    void showCalcWindow(QObject* sender);
    void changeDisplayMode(QObject* sender);
    void changeDisplayFrameRate(QObject* sender);
    void changeDisplayCalcMode(QObject* sender);
    void changeTimecodeNotation(QObject* sender);
    void toggleResultLog(QObject* sender);
    void saveLogFile(QObject* sender);
    void clearLogFile(QObject* sender);
    void resetCalculator(QObject* sender);
    void showAboutBox(QObject* sender);
    void showHelpInWebBrowser(QObject* sender);
    void visitHomepage(QObject* sender);

private:
    using Command = void (StandaloneCalcController::*)(QObject*);

    void loadAboutBox();
    void buildMenuBar(QMenuBar* menuBar);
    void buildEditMenu(QMenuBar* menuBar);
    QAction* addCommand(QMenu* menu, const QString& title, const QKeySequence& shortcut,
                        Command command);
    QMenu* addTaggedMenu(QMenuBar* menuBar, const QString& title, Command command,
                         const std::vector<std::tuple<QString, QKeySequence, int>>& items);
    void addTimecodeNotationItems(QMenu* menu);
    void addTrayIcon();

    std::unique_ptr<TSCController> m_calcController;
    QPointer<QDialog> m_aboutBox;
    QPointer<QLabel> m_versionText;
    QPointer<QLabel> m_iconLabel;
    QPointer<QMenu> m_displayModeMenu;
    QPointer<QMenu> m_displayFrameRateMenu;
    QPointer<QMenu> m_displayCalculationModeMenu;
    QList<QAction*> m_timecodeNotationItems;
    QPointer<QSystemTrayIcon> m_trayIcon;
    TSCController::UrlOpener m_openUrl;
};

}  // namespace vantrel
