#pragma once

#include <QAction>
#include <QMenu>
#include <QObject>
#include <QPointer>
#include <QSize>
#include <QString>
#include <QTimer>
#include <QUrl>
#include <functional>
#include <memory>

#include "Calc.h"
#include "EventTable.h"
#include "ExpressionHistory.h"
#include "HelpWindow.h"
#include "Preferences.h"
#include "SideCalculators.h"
#include "Units.h"

class QComboBox;
class QSyntaxHighlighter;
class QPropertyAnimation;
class QMainWindow;

class QLineEdit;

namespace Ui {
class Calculator;
}

namespace vantrel {

class CutWindow;

/// The controller of the one calculator window. It owns the engine and every piece of state the
/// window's operations share, and talks to the widgets of the layout "Calculator".
///
/// Actions take their sender; a sender's tag is its "tag" property.
class TSCController : public QObject {
    Q_OBJECT

public:
    static constexpr double kCollapsedHeight = 252.0;
    /// How long the height must rest before a drag or a window manager's resize counts as ended.
    static constexpr int kSettleMilliseconds = 200;
    /// The widest a history entry is shown in the history menu, in pixels.
    static constexpr int kHistoryItemWidth = 420;

    explicit TSCController(QObject* parent = nullptr);
    ~TSCController() override;

    /// The calculator window, created from its layout on first use.
    QMainWindow* calcWindow();
    /// One-time set-up of the loaded window and restoring of the stored choices.
    void initialize();

    Calc& calculator() { return m_calculator; }
    bool displayCalcModeTime() const { return m_displayCalcModeTime; }
    void setDisplayCalcModeTime(bool flag);
    bool isClean() const { return m_clean; }
    int lines() const { return m_lines; }
    int displayButtonState() const { return m_displayButtonState; }
    int displayFrameRateState() const { return m_displayFrameRateState; }
    bool logExpanded() const { return m_logExpanded; }
    double storedHeight() const { return m_storedHeight; }
    const ExpressionHistory& expressionHistory() const { return m_expressionHistory; }

    int resolutionIndex() const { return m_resolutionIndex; }
    int aspectRatioIndex() const { return m_aspectRatioIndex; }
    int bitDepthIndex() const { return m_bitDepthIndex; }
    int transferSpeedIndex() const { return m_transferSpeedIndex; }
    int filmIndex() const { return m_filmIndex; }
    int systemIndex() const { return m_systemIndex; }
    void setResolutionIndex(int index);
    void setAspectRatioIndex(int index);
    void setBitDepthIndex(int index);
    void setTransferSpeedIndex(int index);
    void setFilmIndex(int index);
    void setSystemIndex(int index);

    QString diskSpacePT() const { return m_diskSpacePT; }
    QString transferTimePT() const { return m_transferTimePT; }
    QString diskSpacePF() const { return m_diskSpacePF; }
    QString transferTimePF() const { return m_transferTimePF; }
    QString filmLengthPT() const { return m_filmLengthPT; }
    QString filmLengthPF() const { return m_filmLengthPF; }
    // Each result field of the side calculators follows its text.
    void setDiskSpacePT(const QString& text);
    void setTransferTimePT(const QString& text);
    void setDiskSpacePF(const QString& text);
    void setTransferTimePF(const QString& text);
    void setFilmLengthPT(const QString& text);
    void setFilmLengthPF(const QString& text);

    /// Recompute the side calculators' texts from the engine's cached results.
    void updateDiskSpaceAndTranferTime();
    void updateFilmStuff();

    QMenu* displayModeMenu() const { return m_displayModeMenu; }
    QMenu* displayFrameRateMenu() const { return m_displayFrameRateMenu; }
    QMenu* displayCalcModeMenu() const { return m_displayCalcModeMenu; }
    void setDisplayModeMenu(QMenu* menu) { m_displayModeMenu = menu; }
    void setDisplayFrameRateMenu(QMenu* menu) { m_displayFrameRateMenu = menu; }
    void setDisplayCalcModeMenu(QMenu* menu) { m_displayCalcModeMenu = menu; }

    /// How result fields, log lines and history entries write timecodes; stored under
    /// "TimecodeNotation" as "classic" or "smpte".
    TimecodeNotation timecodeNotation() const { return m_calculator.timecodeNotation(); }
    void setTimecodeNotation(TimecodeNotation notation);
    /// The menu items that choose the notation, each tagged 0 (classic) or 1 (SMPTE).
    void setTimecodeNotationItems(const QList<QAction*>& items);

    /// The unit displays' film gauge ("FeetFramesGauge", by name) and sample rate
    /// ("AudioSampleRate", in Hz), and whether the PT reading takes the exact NTSC rates
    /// ("ExactNTSCRates").
    const units::UnitChoice& unitChoice() const { return m_unitChoice; }
    void setFeetGauge(const units::Gauge& gauge);
    void setSampleRate(int sampleRate);
    void setExactRates(bool exact);
    /// Whether time results are written as a 24-hour clock shows them ("WrapAt24Hours").
    bool wrapsAt24Hours() const { return m_calculator.wrapsAt24Hours(); }
    void setWrapsAt24Hours(bool wraps);
    /// Adds the choices of gauge, sample rate, exact rates and the 24-hour clock to the menu, kept
    /// checked.
    void addUnitChoiceItems(QMenu* menu);

    /// The result field of a reading in the current display: the time or number result, the
    /// disk space or the film length.
    QLineEdit* resultFieldOf(bool pt) const;

    /// The widgets of the layout, for the application shell and for tests.
    Ui::Calculator& ui();

    /// How pages are opened in the desktop's browser; replaceable so tests open nothing.
    using UrlOpener = std::function<bool(const QUrl&)>;
    void setUrlOpener(UrlOpener opener) { m_openUrl = std::move(opener); }
    /// Opens the help page at the anchor in the desktop's browser or, failing that, in a window
    /// of Vantrel's own; beeps only when the page itself is missing.
    void showHelp(const QString& anchor = QString());
    /// The help window, once the help was shown without a browser.
    HelpWindow* helpWindow() const { return m_helpWindow; }

public slots:
    // Expression entry.
    void finish(QObject* sender);
    void reset(QObject* sender);
    /// Clears the input and the results, and leaves the log as it is.
    void clearEntry(QObject* sender);
    void update(QObject* sender);
    void buttonPressed(QObject* sender);
    void controlTextDidChange();
    void controlTextDidEndEditing();

    // Display state, frame rate and calculation mode.
    void changeDisplayMode(QObject* sender);
    void changeDisplayFrameRate(QObject* sender);
    void showFpsMenu(QObject* sender);
    void toggleCalcMode(QObject* sender);
    void changeTimecodeNotation(QObject* sender);

    // The results to the clipboard as the fields show them.
    /// Edit > Copy Result: the active reading's result; also Ctrl+C in the input with nothing
    /// selected.
    void copyResult(QObject* sender);
    /// Edit > Copy Other Reading: the result of the reading that is not the active one.
    void copyOtherReading(QObject* sender);

    // Side calculators.
    void pasteDiskSpaceToLog(QObject* sender);
    void pasteFilmLengthToLog(QObject* sender);

    // Expression history.
    void showMenu(QObject* sender);
    void goToExpressionHistory(QObject* sender);
    void clearExpressionHistory(QObject* sender);

    // Result log.
    void clearLog(QObject* sender);
    void saveLogFile(QObject* sender);
    /// Completion of the save dialog: writes the log to the chosen file when accepted (code 1).
    void savePanelDidEnd(const QString& fileName, int returnCode);
    void openExpressionHelp(QObject* sender);
    /// File > Open Timeline…: the chosen file goes to openTimelineFile().
    void openTimeline(QObject* sender);
    /// Opens the cut in a window of its own, logs one line of it and puts its running time into
    /// the input field; a file without events gets a message and changes nothing.
    void openTimelineFile(const QString& fileName);
    void pasteInfo(QObject* sender);

    // Window.
    void changeWindow(QObject* sender);
    /// The height the window takes while the user drags its size.
    QSize windowWillResize(QSize proposedSize);
    void windowDidMove();
    void setPasteButtonHidden(bool hidden);
    bool validateMenuItem(QAction* item) const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    /// Takes a drag or drop of a cut's file on the window or one of its views.
    bool acceptTimelineDrop(QEvent* event);
    /// Buttons, pop-ups and result fields: a key typed on them is meant for the input.
    static bool passesKeysToInput(const QObject* view);
    /// Takes a key typed on such a view into the input.
    bool typeIntoInput(QObject* watched, QEvent* event);

private:
    void loadWindow();
    void connectWidgets();
    void fillPopUps();
    void restoreIndexes();
    void restoreTimecodeNotation();
    void restoreUnitChoices();
    void checkUnitChoiceItems();
    void unitChoiceChanged();
    /// The typed expression tidied for the log and the history, unit literals kept.
    QString beautified(const std::string& typed) const;
    void restoreWindowFrame();
    void rememberExpression(const QString& inputText);
    void appendToLog(const QString& text);
    void showCutWindow(const QString& fileName, std::shared_ptr<const timeline::EventTable> table);
    void showNoEvents(const QString& name, const timeline::Cut& cut);
    void showLazyResults(bool keepFilmFields);
    /// The text of one reading in the current display state.
    std::optional<std::string> evaluated(const std::string& typed, Flavour flavour, bool lazy);
    void showLazyResult(QLineEdit* field, const std::optional<std::string>& result,
                        bool keepFilmFields);
    void refreshSideCalculators();
    QString placeholder() const;
    QString logLine(const QString& expression, const std::string& result, bool pt) const;
    void setLogButtonsEnabled(bool enabled);
    void emptyLog();
    void showLogPictures(bool expanded);
    void showLog(bool expanded);
    void showLogAreaIfRoom();
    void settleHeight();
    void finishWindowAnimation();
    void setIndex(int& field, int index, const char* key, void (TSCController::*recompute)());
    // The side calculators' choices as rows of their tables, whatever the stored indexes hold.
    side_calculators::DiskChoice diskChoice() const;
    int filmRow() const;
    int systemRow() const;
    void showDisplayStateViews();
    void showUnitToolTips();
    void checkCalcModeItems();
    void rebuildHistoryMenu(QMenu* menu);
    void checkTimecodeNotationItems();
    void setFrameRate(int code);
    void pasteToLog(const std::function<std::string(const std::string& frames)>& entry);
    void setResultText(QString& text, QLineEdit* field, const QString& newText);
    static void showPopUpIndex(QComboBox* popUp, int index);
    void smallifyMenuItem(QAction* item) const;

    std::unique_ptr<Ui::Calculator> m_ui;
    QMainWindow* m_window = nullptr;
    Preferences m_preferences;
    Calc m_calculator;
    ExpressionHistory m_expressionHistory;

    QString m_diskSpacePT;
    QString m_transferTimePT;
    QString m_diskSpacePF;
    QString m_transferTimePF;
    QString m_filmLengthPT;
    QString m_filmLengthPF;

    bool m_clean = true;
    int m_lines = 0;
    int m_displayButtonState = DisplayStateTime;
    int m_displayFrameRateState = DisplayState24fps;
    int m_resolutionIndex = 0;
    int m_aspectRatioIndex = 0;
    int m_bitDepthIndex = 0;
    int m_transferSpeedIndex = 0;
    int m_filmIndex = 0;
    int m_systemIndex = 0;
    double m_storedHeight = 0.0;
    bool m_logExpanded = false;
    bool m_buttonsExpanded = true;
    bool m_displayCalcModeTime = false;
    bool m_animating = false;
    QPointer<QPropertyAnimation> m_windowAnimation;
    // Restarted by every resize the window did not ask for; fires once the height has settled.
    QTimer m_settleTimer;
    UrlOpener m_openUrl;
    QPointer<HelpWindow> m_helpWindow;
    QPointer<QMenu> m_displayModeMenu;
    QPointer<QMenu> m_displayFrameRateMenu;
    QPointer<QMenu> m_displayCalcModeMenu;
    QList<QPointer<QAction>> m_timecodeNotationItems;
    units::UnitChoice m_unitChoice;
    QList<QPointer<QAction>> m_gaugeItems;
    QList<QPointer<QAction>> m_sampleRateItems;
    QPointer<QAction> m_exactRatesItem;
    QPointer<QAction> m_wrapItem;
    QPointer<QSyntaxHighlighter> m_highlighter;
    QList<QPointer<CutWindow>> m_cutWindows;
};

}  // namespace vantrel
