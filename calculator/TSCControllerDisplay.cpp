// TSCController: what the results show (time, frame number, disk space, film length), at which
// frame rate, and which reading is the active one.

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QSyntaxHighlighter>

#include "FrameRate.h"
#include "NamedImages.h"
#include "TSCController.h"
#include "ui_Calculator.h"

namespace vantrel {

namespace {

QString displayStatePicture(int state) {
    switch (state) {
        case DisplayStateNumber:
            return QStringLiteral("DisplayButtonNumber");
        case DisplayStateDiskSpace:
            return QStringLiteral("DisplayButtonDiskSpace");
        case DisplayStateFilmLength:
            return QStringLiteral("DisplayButtonFilm");
        case DisplayStateFeetFrames:
            return QStringLiteral("DisplayButtonFeetFrames");
        case DisplayStateSamples:
            return QStringLiteral("DisplayButtonSamples");
        case DisplayStateRealTime:
            return QStringLiteral("DisplayButtonRealTime");
        case DisplayStateRational:
            return QStringLiteral("DisplayButtonRational");
        case DisplayStateTicks:
            return QStringLiteral("DisplayButtonTicks");
        default:
            return QStringLiteral("DisplayButtonTime");
    }
}

QString frameRatePicture(int code) {
    const FrameRate* rate = frameRateForCode(code);
    const std::string_view suffix = rate ? rate->suffix : kFrameRates.front().suffix;
    return QStringLiteral("DisplayButton") +
           QLatin1String(suffix.data(), static_cast<qsizetype>(suffix.size()));
}

const QString kNotationKey = QStringLiteral("TimecodeNotation");

// What a screen reader says for the display button: "Display: frame number".
QString displayStateName(int state) {
    switch (state) {
        case DisplayStateNumber:
            return QObject::tr("Display: frame number");
        case DisplayStateDiskSpace:
            return QObject::tr("Display: disk space");
        case DisplayStateFilmLength:
            return QObject::tr("Display: film length");
        case DisplayStateFeetFrames:
            return QObject::tr("Display: feet and frames");
        case DisplayStateSamples:
            return QObject::tr("Display: audio samples");
        case DisplayStateRealTime:
            return QObject::tr("Display: real time");
        case DisplayStateRational:
            return QObject::tr("Display: rational seconds");
        case DisplayStateTicks:
            return QObject::tr("Display: Premiere ticks");
        default:
            return QObject::tr("Display: time");
    }
}

// "Rate: 29.97 fps drop frame" from the pop-up caption "29.97 drop frame (29d)".
QString rateName(const QString& caption) {
    QString rest = caption.section(QLatin1Char('('), 0, 0).trimmed();
    const QString number = rest.section(QLatin1Char(' '), 0, 0);
    rest = rest.section(QLatin1Char(' '), 1);
    return QObject::tr("Rate: %1 fps").arg(number) + (rest.isEmpty() ? QString() : u' ' + rest);
}

// Checks the items of a menu whose tag equals the value and unchecks the other tagged items, but
// for the items that choose something else (the notation in the Display menu).
void checkTaggedItems(QMenu* menu, int value, const QList<QPointer<QAction>>& otherChoices = {}) {
    if (!menu) return;
    for (QAction* item : menu->actions()) {
        const QVariant tag = item->property("tag");
        if (!tag.isValid() || otherChoices.contains(item)) continue;
        item->setCheckable(true);
        item->setChecked(tag.toInt() == value);
    }
}

}  // namespace

void TSCController::showDisplayStateViews() {
    const int state = m_displayButtonState;
    const bool time = state == DisplayStateTime;
    const bool calculator = time || state == DisplayStateNumber || units::isUnitDisplay(state);
    const bool disk = state == DisplayStateDiskSpace;
    const bool film = state == DisplayStateFilmLength;
    m_ui->displayButton->setIcon(namedImage(displayStatePicture(state)));
    m_ui->displayButton->setAccessibleName(displayStateName(state));
    if (disk || film) setResolutionIndex(m_resolutionIndex);
    if (disk) updateDiskSpaceAndTranferTime();
    if (film) updateFilmStuff();

    m_ui->resultField->setVisible(calculator);
    m_ui->resultField2->setVisible(calculator);
    showUnitToolTips();
    for (QWidget* view : {static_cast<QWidget*>(m_ui->resultDiskSpaceField),
                          static_cast<QWidget*>(m_ui->resultDiskSpaceField2),
                          static_cast<QWidget*>(m_ui->resultTransferTimeField),
                          static_cast<QWidget*>(m_ui->resultTransferTimeField2),
                          static_cast<QWidget*>(m_ui->commentTF1),
                          static_cast<QWidget*>(m_ui->commentTF2), m_ui->diskSpacePupUpView}) {
        view->setVisible(disk);
    }
    m_ui->filmResultField->setVisible(film);
    m_ui->filmResultField2->setVisible(film);
    m_ui->filmLengthView->setVisible(film);
    m_ui->buttonView->setVisible(calculator);
    if (time) {
        m_ui->displayButton24->show();
        m_ui->displayButton24->setEnabled(true);
        m_ui->displayButton24->setIcon(namedImage(frameRatePicture(m_displayFrameRateState)));
    }
}

void TSCController::changeDisplayMode(QObject* sender) {
    if (sender == m_ui->displayButton) {
        // The button steps time, number, disk space, film length and back to time; from a unit
        // display, reached by menu, it goes on to disk space as from the number.
        const int next = m_displayButtonState + 1;
        m_displayButtonState = next > DisplayStateNumber ? DisplayStateDiskSpace : next;
    } else if (sender) {
        m_displayButtonState = sender->property("tag").toInt();
    }
    checkTaggedItems(m_displayModeMenu, m_displayButtonState, m_timecodeNotationItems);
    showDisplayStateViews();
    m_clean = false;
    showLazyResults(true);
}

void TSCController::setFrameRate(int code) {
    m_displayFrameRateState = code;
    checkTaggedItems(m_displayFrameRateMenu, code);
    const QSignalBlocker blocker(m_ui->fpsPopUp);
    m_ui->fpsPopUp->setCurrentIndex(m_ui->fpsPopUp->findData(code));
    m_ui->displayButton24->setIcon(namedImage(frameRatePicture(code)));
    const QString name = rateName(m_ui->fpsPopUp->currentText());
    m_ui->displayButton24->setAccessibleName(name);
    m_ui->fpsPopUp->setAccessibleName(name);
    m_calculator.setFps(code);
}

void TSCController::changeDisplayFrameRate(QObject* sender) {
    int code = m_displayFrameRateState;
    if (sender == m_ui->displayButton24) {
        // The button is the quick toggle among the classic seven; the other rates are a choice
        // in the pop-up, the Rate menu or a shortcut away, and from any of them the next click
        // goes on among the seven.
        code = (code + 1) % kClassicRateCount;
    } else if (sender == m_ui->fpsPopUp) {
        // The separator and anything past the last rate carry no code and keep the rate.
        const QVariant chosen = m_ui->fpsPopUp->currentData();
        if (chosen.isValid()) code = chosen.toInt();
    } else if (sender) {
        const int tag = sender->property("tag").toInt();
        // The engine only ever runs at one of the frame-rate codes.
        if (frameRateForCode(tag)) code = tag;
    }
    setFrameRate(code);
    m_clean = false;
    // The rate decides how many frame digits the grammar takes and what unit literals stand for.
    if (m_highlighter) m_highlighter->rehighlight();
    showLazyResults(true);
    updateDiskSpaceAndTranferTime();
    updateFilmStuff();
}

void TSCController::restoreTimecodeNotation() {
    const auto stored = m_preferences.string(kNotationKey);
    m_calculator.setTimecodeNotation(stored == QStringLiteral("smpte") ? TimecodeNotation::Smpte
                                                                       : TimecodeNotation::Classic);
    showLazyResults(false);
}

void TSCController::setTimecodeNotation(TimecodeNotation notation) {
    if (notation == timecodeNotation()) return;
    m_calculator.setTimecodeNotation(notation);
    m_preferences.setValue(kNotationKey, notation == TimecodeNotation::Smpte
                                             ? QStringLiteral("smpte")
                                             : QStringLiteral("classic"));
    checkTimecodeNotationItems();
    // The fields show the text anew; whether it may be logged again does not change.
    showLazyResults(true);
}

void TSCController::setTimecodeNotationItems(const QList<QAction*>& items) {
    m_timecodeNotationItems.clear();
    for (QAction* item : items) m_timecodeNotationItems << item;
    checkTimecodeNotationItems();
}

void TSCController::checkTimecodeNotationItems() {
    const int chosen = timecodeNotation() == TimecodeNotation::Smpte ? 1 : 0;
    for (const QPointer<QAction>& item : m_timecodeNotationItems) {
        if (!item) continue;
        item->setCheckable(true);
        item->setChecked(item->property("tag").toInt() == chosen);
    }
}

void TSCController::changeTimecodeNotation(QObject* sender) {
    if (!sender) return;
    setTimecodeNotation(sender->property("tag").toInt() == 1 ? TimecodeNotation::Smpte
                                                             : TimecodeNotation::Classic);
    // An exclusive group has already moved the check; a plain sender has not.
    checkTimecodeNotationItems();
}

void TSCController::showFpsMenu(QObject*) {
    m_ui->fpsPopUp->showPopup();
}

void TSCController::toggleCalcMode(QObject* sender) {
    // The same expression may now be finished again, into the other reading's log line.
    m_clean = false;
    if (sender == m_ui->modeButton) {
        setDisplayCalcModeTime(!m_displayCalcModeTime);
    } else if (sender) {
        setDisplayCalcModeTime(sender->property("tag").toInt() != 0);
    }
    checkCalcModeItems();
}

// A unit's figures depend on a choice made in the menu, perhaps long ago: the fields say which.
void TSCController::showUnitToolTips() {
    QString tip;
    if (m_displayButtonState == DisplayStateFeetFrames) {
        tip =
            tr("Feet+frames of %1 film")
                .arg(QString::fromUtf8(m_unitChoice.gauge->caption.data(),
                                       static_cast<qsizetype>(m_unitChoice.gauge->caption.size())));
    } else if (m_displayButtonState == DisplayStateSamples) {
        tip = tr("Audio samples at %1 from frame 0")
                  .arg(QString::fromStdString(
                           units::unitChoiceText(DisplayStateSamples, m_unitChoice))
                           .replace(QStringLiteral("kHz"), QStringLiteral(" kHz")));
    } else if (m_displayButtonState == DisplayStateRealTime) {
        tip = tr("Real time of the frames, to the millisecond");
    } else if (m_displayButtonState == DisplayStateRational) {
        tip = tr("Seconds as a fraction at the exact rate, as FCPXML writes them");
    } else if (m_displayButtonState == DisplayStateTicks) {
        tip = tr("Premiere ticks, 254,016,000,000 a second");
    }
    m_ui->resultField->setToolTip(tip);
    m_ui->resultField2->setToolTip(tip);
}

QLineEdit* TSCController::resultFieldOf(bool pt) const {
    if (m_displayButtonState == DisplayStateDiskSpace) {
        return pt ? m_ui->resultDiskSpaceField : m_ui->resultDiskSpaceField2;
    }
    if (m_displayButtonState == DisplayStateFilmLength) {
        return pt ? m_ui->filmResultField : m_ui->filmResultField2;
    }
    return pt ? m_ui->resultField : m_ui->resultField2;
}

// What the field shows is what is copied: the placeholder too, which is a result of 0 frames.
void TSCController::copyResult(QObject*) {
    QApplication::clipboard()->setText(resultFieldOf(m_displayCalcModeTime)->text());
}

void TSCController::copyOtherReading(QObject*) {
    QApplication::clipboard()->setText(resultFieldOf(!m_displayCalcModeTime)->text());
}

}  // namespace vantrel
