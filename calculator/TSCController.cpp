// TSCController: construction, window set-up, stored choices and the calculation mode.

#include "TSCController.h"

#include <syslog.h>

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDesktopServices>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QSizeGrip>
#include <QStyleOptionFrame>

#include "CaptionTables.h"
#include "DisplayHoverButton.h"
#include "FirstDrawingWatcher.h"
#include "InputHighlighter.h"
#include "NamedImages.h"
#include "ui_Calculator.h"

namespace vantrel {

namespace {

const QColor kWindowGrey(180, 185, 197);
const QColor kActiveResult(55, 63, 70);
const QColor kInactiveResult(207, 208, 197);

// The frame-rate pop-up lists the rates by how often editors use them, not by code: film and
// SD video first, then HD and UHD, then the two rarer non-drop rates, then the high frame rates.
// A separator has no code. The closed pop-up shows the compact caption.
struct FpsPopUpItem {
    int code;
    const char* compactCaption;
};

constexpr int kFpsPopUpSeparator = -1;
constexpr FpsPopUpItem kFpsPopUpItems[] = {
    {DisplayState23drop, "23.976d"},    {DisplayState24fps, "24"},
    {DisplayState25fps, "25"},          {DisplayState29drop, "29.97d"},
    {DisplayState30fps, "30"},          {kFpsPopUpSeparator, ""},
    {DisplayState23nondrop, "23.976"},  {DisplayState29nondrop, "29.97"},
    {kFpsPopUpSeparator, ""},           {DisplayState48fps, "48"},
    {DisplayState50fps, "50"},          {DisplayState59drop, "59.94d"},
    {DisplayState60fps, "60"},          {kFpsPopUpSeparator, ""},
    {DisplayState47nondrop, "47.952"},  {DisplayState59nondrop, "59.94"},
    {kFpsPopUpSeparator, ""},           {DisplayState72fps, "72"},
    {DisplayState95nondrop, "95.904"},  {DisplayState96fps, "96"},
    {DisplayState100fps, "100"},        {DisplayState119drop, "119.88d"},
    {DisplayState119nondrop, "119.88"}, {DisplayState120fps, "120"}};

template <typename Table>
void fillPopUp(QComboBox* popUp, const Table& captions) {
    popUp->clear();
    for (const char* caption : captions) popUp->addItem(QString::fromUtf8(caption));
}

void setTextColour(QLineEdit* field, const QColor& colour) {
    QPalette palette = field->palette();
    palette.setColor(QPalette::Text, colour);
    field->setPalette(palette);
}

// A result is text on the window's grey: the field draws no base of its own. A palette rather than
// a style sheet: one style sheet anywhere brings Qt's whole style-sheet machinery into the window.
// Some styles (Fusion among them) keep room around a frameless field for a frame it never draws;
// the results sit as close to the input and the keys as their fonts allow.
void showAsBareText(QLineEdit* field) {
    QPalette palette = field->palette();
    palette.setColor(QPalette::Base, Qt::transparent);
    field->setPalette(palette);
    QStyleOptionFrame frameless;
    frameless.initFrom(field);
    frameless.lineWidth = 0;
    const int room = field->style()
                         ->sizeFromContents(QStyle::CT_LineEdit, &frameless, QSize(0, 0), field)
                         .height();
    field->setTextMargins(0, -(room / 2), 0, -(room - room / 2));
}

// The window's corner is drawn by its own picture; the grip over it only takes the drag.
class InvisibleSizeGrip : public QSizeGrip {
public:
    using QSizeGrip::QSizeGrip;

protected:
    void paintEvent(QPaintEvent*) override {}
};

}  // namespace

TSCController::TSCController(QObject* parent)
    : QObject(parent),
      m_ui(std::make_unique<Ui::Calculator>()),
      m_openUrl([](const QUrl& url) { return QDesktopServices::openUrl(url); }) {}

TSCController::~TSCController() {
    delete m_window;
}

Ui::Calculator& TSCController::ui() {
    calcWindow();
    return *m_ui;
}

QMainWindow* TSCController::calcWindow() {
    if (!m_window) loadWindow();
    return m_window;
}

void TSCController::loadWindow() {
    m_window = new QMainWindow;
    m_ui->setupUi(m_window);
    for (QLineEdit* field :
         {m_ui->resultField, m_ui->resultField2, m_ui->resultDiskSpaceField,
          m_ui->resultDiskSpaceField2, m_ui->resultTransferTimeField,
          m_ui->resultTransferTimeField2, m_ui->filmResultField, m_ui->filmResultField2}) {
        showAsBareText(field);
    }
    m_window->installEventFilter(this);
    m_settleTimer.setSingleShot(true);
    m_settleTimer.setInterval(kSettleMilliseconds);
    connect(&m_settleTimer, &QTimer::timeout, this, &TSCController::settleHeight);
    connect(qApp, &QCoreApplication::aboutToQuit, this, &TSCController::finishWindowAnimation);
    // An EDL may be dropped anywhere on the window, also on the views that take dropped text.
    m_window->setAcceptDrops(true);
    for (QWidget* view : {m_ui->inputField->viewport(), m_ui->calcLog->viewport()}) {
        view->installEventFilter(this);
    }
    // The drawn corner is a grip: a drag on it resizes the window, through the window manager
    // where there is one, and the height settles as after any drag.
    auto* grip = new InvisibleSizeGrip(m_ui->resizeImage);
    grip->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    grip->setAccessibleName(tr("Resize the window"));
    auto* gripLayout = new QHBoxLayout(m_ui->resizeImage);
    gripLayout->setContentsMargins(0, 0, 0, 0);
    gripLayout->addWidget(grip);
    for (QWidget* view : m_window->findChildren<QWidget*>()) {
        if (passesKeysToInput(view)) view->installEventFilter(this);
    }
    // The input's document owns the highlighter.
    m_highlighter = new InputHighlighter(m_calculator, m_unitChoice, m_ui->inputField->document());
    fillPopUps();
    connectWidgets();
    // The layout's fixed minimum height would otherwise keep Qt from widening the window for a
    // larger font; every caption needs its room.
    m_window->setMinimumWidth(
        std::max(m_window->minimumWidth(), m_window->centralWidget()->minimumSizeHint().width()));

    m_ui->historyButton->setIcon(namedImage(QStringLiteral("HistoryButton")));
    // Esc takes back what is being typed; the log, which may hold an hour of work, stays.
    showLog(false);
    showDisplayStateViews();
    m_ui->resultField->setText(placeholder());
    m_ui->resultField2->setText(placeholder());
}

void TSCController::fillPopUps() {
    fillPopUp(m_ui->resolutionPopUpButton, captions::kResolution);
    fillPopUp(m_ui->aspectRatioPopUpButton, captions::kAspectRatio);
    fillPopUp(m_ui->bitDepthPopUpButton, captions::kBitDepth);
    fillPopUp(m_ui->transferSpeedPopUpButton, captions::kTransferSpeed);
    for (std::size_t row = 0; row < captions::kTransferSpeedCompact.size(); ++row) {
        m_ui->transferSpeedPopUpButton->setItemData(
            static_cast<int>(row), QString::fromLatin1(captions::kTransferSpeedCompact[row]),
            CompactComboBox::kCompactCaptionRole);
    }
    m_ui->transferSpeedPopUpButton->updateGeometry();
    fillPopUp(m_ui->filmPopUpButton, captions::kFilm);
    fillPopUp(m_ui->systemPopUpButton, captions::kSystem);
    CompactComboBox* popUp = m_ui->fpsPopUp;
    const int items = std::min(popUp->count(), static_cast<int>(std::size(kFpsPopUpItems)));
    for (int position = 0; position < items; ++position) {
        const FpsPopUpItem& item = kFpsPopUpItems[position];
        if (item.code == kFpsPopUpSeparator) {
            popUp->removeItem(position);
            popUp->insertSeparator(position);
            continue;
        }
        popUp->setItemData(position, item.code);
        popUp->setItemData(position, QString::fromLatin1(item.compactCaption),
                           CompactComboBox::kCompactCaptionRole);
    }
    popUp->updateGeometry();
}

void TSCController::initialize() {
    // Restoring the choices writes each of them back; one write, once the window has been drawn,
    // does. Writing waits for the disk twice (3 ms), which the user would see as a window that
    // appears blank first.
    m_preferences.holdWrites();
    QMainWindow* window = calcWindow();
    FirstDrawingWatcher::afterFirstDrawing(window, this, [this] { m_preferences.writeHeld(); });
    // The collapsed height is that of the whole window; a menu bar inside it takes its share.
    const QWidget* menuBar = window->menuWidget();
    const int menuBarHeight = menuBar ? menuBar->sizeHint().height() : 0;
    m_ui->calculatorPanel->setFixedHeight(static_cast<int>(kCollapsedHeight) - menuBarHeight);
    window->resize(window->width(), static_cast<int>(kCollapsedHeight));
    QPalette palette = window->palette();
    palette.setColor(QPalette::Window, kWindowGrey);
    window->setPalette(palette);
    window->setAutoFillBackground(true);
    m_ui->resetButton->setEnabled(false);
    m_storedHeight = window->height();

    setDiskSpacePT(QStringLiteral("0 MB"));
    setTransferTimePT(QStringLiteral("0 h"));
    setDiskSpacePF(QStringLiteral("0 MB"));
    setTransferTimePF(QStringLiteral("0 h"));
    restoreIndexes();
    restoreTimecodeNotation();
    restoreUnitChoices();

    // The hover buttons' images sit where the window's layout expects them.
    m_ui->displayButton24->cell().setOffset(2.0f);
    m_ui->historyButton->cell().setOffset(-60.0f);
    m_ui->expandCollapseButton->cell().setOffset(3.0f);
    // The label buttons are wider than the standard display button; their labels are centred in
    // their own width.
    for (DisplayHoverButton* label :
         {m_ui->displayButton, m_ui->displayButton24, m_ui->modeButton}) {
        label->cell().setStandardWidth(label->minimumWidth());
    }
    // Two pictures sit off their button's middle, the rate label by its offset and the history
    // clock at the far right: those buttons show and answer the mouse only around the picture.
    m_ui->displayButton24->fitToImage();
    m_ui->historyButton->fitToImage();
    setFrameRate(DisplayState24fps);
    m_displayCalcModeTime = false;
    setDisplayCalcModeTime(true);
    m_expressionHistory =
        ExpressionHistory(m_preferences.stringList(QStringLiteral("CalculatorExpressionHistory")));
    // At the collapsed height the log has no room: left out of the first show, it costs nothing
    // until the window is first made taller, and from then on it stays in the layout.
    m_ui->logArea->hide();
    restoreWindowFrame();
    showLogAreaIfRoom();
    // The calculator is for typing: the expression field has the keyboard from the start.
    m_ui->inputField->setFocus();
}

// Only the presence of the resolution key tells a returning user from a first start: the setters
// write a key only when its value changes, so the keys whose first-start value is 0 may be absent.
void TSCController::restoreIndexes() {
    if (m_preferences.contains(QStringLiteral("CalcResolutionIndex"))) {
        setResolutionIndex(m_preferences.integer(QStringLiteral("CalcResolutionIndex")));
        setBitDepthIndex(m_preferences.integer(QStringLiteral("CalcBitDepthIndex")));
        setAspectRatioIndex(m_preferences.integer(QStringLiteral("CalcAspectRatioIndex")));
        setTransferSpeedIndex(m_preferences.integer(QStringLiteral("CalcTransferSpeedIndex")));
        setFilmIndex(m_preferences.integer(QStringLiteral("CalcFilmIndex")));
        setSystemIndex(m_preferences.integer(QStringLiteral("CalcSystemIndex")));
        return;
    }
    setResolutionIndex(captions::kFirstStartResolution);
    setBitDepthIndex(captions::kFirstStartBitDepth);
    setAspectRatioIndex(captions::kFirstStartAspectRatio);
    setTransferSpeedIndex(captions::kFirstStartTransferSpeed);
    setFilmIndex(captions::kFirstStartFilm);
    setSystemIndex(captions::kFirstStartSystem);
}

void TSCController::restoreWindowFrame() {
    syslog(LOG_NOTICE, "DEBUG: restoring window frame for %s", "Calc Panel");
    const QByteArray frame = m_preferences.bytes(QStringLiteral("Calc Panel"));
    if (!frame.isEmpty()) m_window->restoreGeometry(frame);
}

void TSCController::setIndex(int& field, int index, const char* key,
                             void (TSCController::*recompute)()) {
    if (field == index) return;
    field = index;
    (this->*recompute)();
    m_preferences.setValue(QString::fromLatin1(key), index);
}

void TSCController::showPopUpIndex(QComboBox* popUp, int index) {
    const QSignalBlocker blocker(popUp);
    popUp->setCurrentIndex(index);
}

// Each setter shows the row its index stands for (a stored index outside its table shows the first
// start's row), also when the index is unchanged.
void TSCController::setResolutionIndex(int index) {
    setIndex(m_resolutionIndex, index, "CalcResolutionIndex",
             &TSCController::updateDiskSpaceAndTranferTime);
    const int row = diskChoice().resolution;
    // Only the larger formats come in several aspect ratios.
    ui().aspectRatioPopUpButton->setEnabled(row > 2);
    showPopUpIndex(m_ui->resolutionPopUpButton, row);
}

void TSCController::setAspectRatioIndex(int index) {
    setIndex(m_aspectRatioIndex, index, "CalcAspectRatioIndex",
             &TSCController::updateDiskSpaceAndTranferTime);
    showPopUpIndex(ui().aspectRatioPopUpButton, diskChoice().aspectRatio);
}

void TSCController::setBitDepthIndex(int index) {
    setIndex(m_bitDepthIndex, index, "CalcBitDepthIndex",
             &TSCController::updateDiskSpaceAndTranferTime);
    showPopUpIndex(ui().bitDepthPopUpButton, diskChoice().bitDepth);
}

void TSCController::setTransferSpeedIndex(int index) {
    setIndex(m_transferSpeedIndex, index, "CalcTransferSpeedIndex",
             &TSCController::updateDiskSpaceAndTranferTime);
    showPopUpIndex(ui().transferSpeedPopUpButton, diskChoice().transferSpeed);
}

void TSCController::setFilmIndex(int index) {
    setIndex(m_filmIndex, index, "CalcFilmIndex", &TSCController::updateFilmStuff);
    showPopUpIndex(ui().filmPopUpButton, filmRow());
}

void TSCController::setSystemIndex(int index) {
    setIndex(m_systemIndex, index, "CalcSystemIndex", &TSCController::updateFilmStuff);
    showPopUpIndex(ui().systemPopUpButton, systemRow());
}

void TSCController::setDisplayCalcModeTime(bool flag) {
    if (flag == m_displayCalcModeTime) return;
    m_displayCalcModeTime = flag;
    calcWindow();
    const QColor& pt = flag ? kActiveResult : kInactiveResult;
    const QColor& pf = flag ? kInactiveResult : kActiveResult;
    for (QLineEdit* field : {m_ui->resultField, m_ui->resultDiskSpaceField,
                             m_ui->resultTransferTimeField, m_ui->filmResultField}) {
        setTextColour(field, pt);
    }
    for (QLineEdit* field : {m_ui->resultField2, m_ui->resultDiskSpaceField2,
                             m_ui->resultTransferTimeField2, m_ui->filmResultField2}) {
        setTextColour(field, pf);
    }
    m_ui->modeButton->setIcon(namedImage(flag ? QStringLiteral("DisplayCalcModeTime")
                                              : QStringLiteral("DisplayCalcModeFrames")));
    m_ui->modeButton->setAccessibleName(flag ? tr("Mode: PT, rate suffixes as time")
                                             : tr("Mode: PF, rate suffixes as frames"));
    checkCalcModeItems();
}

// A checkable item that is triggered flips its own check, also when its mode is already active.
void TSCController::checkCalcModeItems() {
    if (!m_displayCalcModeMenu) return;
    for (QAction* item : m_displayCalcModeMenu->actions()) {
        const QVariant tag = item->property("tag");
        if (tag.isValid()) item->setChecked(tag.toInt() == (m_displayCalcModeTime ? 1 : 0));
    }
}

bool TSCController::validateMenuItem(QAction*) const {
    return true;
}

}  // namespace vantrel
