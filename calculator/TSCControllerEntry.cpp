// TSCController: the road from the input field to the result fields and the log.

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>

#include "FrameRate.h"
#include "PastedColumn.h"
#include "TSCController.h"
#include "UnitReading.h"
#include "ui_Calculator.h"

namespace vantrel {

void TSCController::connectWidgets() {
    connect(m_ui->inputField, &ExpressionEdit::textChanged, this,
            &TSCController::controlTextDidChange);
    connect(m_ui->inputField, &ExpressionEdit::returnPressed, this,
            [this] { finish(m_ui->inputField); });
    connect(m_ui->inputField, &ExpressionEdit::editingEnded, this,
            &TSCController::controlTextDidEndEditing);
    connect(m_ui->inputField, &ExpressionEdit::copyWithoutSelection, this,
            [this] { copyResult(m_ui->inputField); });
    m_ui->inputField->setPasteFilter([](const QString& pasted) {
        return QString::fromStdString(pastedExpression(pasted.toStdString()));
    });
    connect(m_ui->resetButton, &QToolButton::clicked, this, [this] { reset(m_ui->resetButton); });
    for (QToolButton* key : {m_ui->divideButton, m_ui->multiplyButton, m_ui->subtractButton,
                             m_ui->addButton, m_ui->showResultButton}) {
        connect(key, &QToolButton::clicked, this, [this, key] { buttonPressed(key); });
    }
    connect(m_ui->historyButton, &QToolButton::clicked, this,
            [this] { showMenu(m_ui->historyButton); });
    connect(m_ui->saveButton, &QToolButton::clicked, this,
            [this] { saveLogFile(m_ui->saveButton); });
    connect(m_ui->clearButton, &QToolButton::clicked, this,
            [this] { clearLog(m_ui->clearButton); });
    connect(m_ui->expandCollapseButton, &QToolButton::clicked, this,
            [this] { changeWindow(m_ui->expandCollapseButton); });
    connect(m_ui->resolutionPopUpButton, &QComboBox::currentIndexChanged, this,
            &TSCController::setResolutionIndex);
    connect(m_ui->aspectRatioPopUpButton, &QComboBox::currentIndexChanged, this,
            &TSCController::setAspectRatioIndex);
    connect(m_ui->bitDepthPopUpButton, &QComboBox::currentIndexChanged, this,
            &TSCController::setBitDepthIndex);
    connect(m_ui->transferSpeedPopUpButton, &QComboBox::currentIndexChanged, this,
            &TSCController::setTransferSpeedIndex);
    connect(m_ui->filmPopUpButton, &QComboBox::currentIndexChanged, this,
            &TSCController::setFilmIndex);
    connect(m_ui->systemPopUpButton, &QComboBox::currentIndexChanged, this,
            &TSCController::setSystemIndex);
    connect(m_ui->displayButton, &QToolButton::clicked, this,
            [this] { changeDisplayMode(m_ui->displayButton); });
    connect(m_ui->displayButton24, &QToolButton::clicked, this,
            [this] { changeDisplayFrameRate(m_ui->displayButton24); });
    connect(m_ui->fpsPopUp, &QComboBox::activated, this,
            [this] { changeDisplayFrameRate(m_ui->fpsPopUp); });
    connect(m_ui->modeButton, &QToolButton::clicked, this,
            [this] { toggleCalcMode(m_ui->modeButton); });
    connect(m_ui->pasteDiskSpaceButton, &QToolButton::clicked, this,
            [this] { pasteDiskSpaceToLog(m_ui->pasteDiskSpaceButton); });
    connect(m_ui->pasteFilmLengthButton, &QToolButton::clicked, this,
            [this] { pasteFilmLengthToLog(m_ui->pasteFilmLengthButton); });
}

QString TSCController::placeholder() const {
    switch (m_displayButtonState) {
        case DisplayStateNumber:
        case DisplayStateSamples:
            return QStringLiteral("0");
        case DisplayStateFilmLength:
            return QStringLiteral("0 m");
        case DisplayStateFeetFrames:
            return QStringLiteral("0+00");
        case DisplayStateRealTime:
            return QStringLiteral("00:00:00.000");
        case DisplayStateRational:
            return QStringLiteral("0s");
        case DisplayStateTicks:
            return QStringLiteral("0");
        default:
            return timecodeNotation() == TimecodeNotation::Smpte ? QStringLiteral("00:00:00:00")
                                                                 : QStringLiteral("00:00:00.00");
    }
}

// A unit's result carries the unit's mark, so that the line reads "… = 5400+00ft|23n (PT)".
QString TSCController::logLine(const QString& expression, const std::string& result,
                               bool pt) const {
    const FrameRate* rate = frameRateForCode(m_displayFrameRateState);
    const QString suffix =
        rate ? QString::fromUtf8(rate->suffix.data(), static_cast<qsizetype>(rate->suffix.size()))
             : QString();
    const std::string_view mark = units::unitMark(m_displayButtonState);
    // A gauge or sample rate chosen long ago is said where the figure is.
    const std::string choice = units::unitChoiceText(m_displayButtonState, m_unitChoice);
    return expression + QStringLiteral(" = ") + QString::fromStdString(result) +
           QString::fromLatin1(mark.data(), static_cast<qsizetype>(mark.size())) +
           QLatin1Char('|') + suffix +
           (choice.empty() ? QString() : QLatin1Char(' ') + QString::fromStdString(choice)) +
           (pt ? QStringLiteral(" (PT)\n") : QStringLiteral(" (PF)\n"));
}

void TSCController::finish(QObject*) {
    if (m_clean) return;
    ++m_lines;
    const QString input = m_ui->inputField->text();
    const std::string typed = input.toStdString();
    const QString expression = beautified(typed);
    rememberExpression(expression);
    if (const auto pt = evaluated(typed, Flavour::PT, false)) {
        if (m_displayCalcModeTime) appendToLog(logLine(expression, *pt, true));
        m_ui->resultField->setText(QString::fromStdString(*pt));
    }
    if (const auto pf = evaluated(typed, Flavour::PF, false)) {
        if (!m_displayCalcModeTime) appendToLog(logLine(expression, *pf, false));
        m_ui->resultField2->setText(QString::fromStdString(*pf));
    }
    refreshSideCalculators();
    m_ui->resetButton->setEnabled(true);
    m_clean = true;
    if (!m_logExpanded) changeWindow(this);
}

void TSCController::reset(QObject*) {
    emptyLog();
    clearEntry(this);
    m_ui->resetButton->setEnabled(false);
    m_lines = 0;
}

// Clean afterwards, so a Return on the empty field neither logs nor remembers anything.
void TSCController::clearEntry(QObject*) {
    m_ui->resultField->setText(placeholder());
    m_ui->resultField2->setText(placeholder());
    {
        const QSignalBlocker blocker(m_ui->inputField);
        m_ui->inputField->setText(QString());
    }
    m_ui->resetButton->setEnabled(!m_ui->calcLog->document()->isEmpty());
    m_clean = true;
}

void TSCController::showLazyResult(QLineEdit* field, const std::optional<std::string>& result,
                                   bool keepFilmFields) {
    if (result && !result->empty()) {
        field->setText(QString::fromStdString(*result));
    } else if (!keepFilmFields || m_displayButtonState != DisplayStateFilmLength) {
        field->setText(placeholder());
    }
}

void TSCController::showLazyResults(bool keepFilmFields) {
    const std::string typed = m_ui->inputField->text().toStdString();
    showLazyResult(m_ui->resultField, evaluated(typed, Flavour::PT, true), keepFilmFields);
    showLazyResult(m_ui->resultField2, evaluated(typed, Flavour::PF, true), keepFilmFields);
}

QString TSCController::beautified(const std::string& typed) const {
    const units::UnitReading reading(typed, m_calculator.fps(), m_unitChoice);
    return QString::fromStdString(reading.beautified(m_calculator));
}

std::optional<std::string> TSCController::evaluated(const std::string& typed, Flavour flavour,
                                                    bool lazy) {
    return units::evaluated(m_calculator, typed, flavour, lazy, m_displayButtonState, m_unitChoice);
}

void TSCController::update(QObject*) {
    m_clean = false;
    m_ui->resetButton->setEnabled(true);
    showLazyResults(false);
    refreshSideCalculators();
}

// The highlighter has already coloured the new text by the time this runs.
void TSCController::controlTextDidChange() {
    showLazyResults(true);
    m_clean = false;
    m_ui->resetButton->setEnabled(true);
    refreshSideCalculators();
}

void TSCController::controlTextDidEndEditing() {
    update(this);
}

void TSCController::buttonPressed(QObject* sender) {
    static const QString operators[] = {QString(), QStringLiteral("/"), QStringLiteral("*"),
                                        QStringLiteral("-"), QStringLiteral("+")};
    const int tag = sender ? sender->property("tag").toInt() : -1;
    if (tag >= 1 && tag <= 4) {
        // Set directly: the lazy results wait for the next change of the text.
        const QSignalBlocker blocker(m_ui->inputField);
        m_ui->inputField->setText(m_ui->inputField->text() + operators[tag]);
    } else if (tag == 0) {
        controlTextDidEndEditing();
    }
    m_ui->inputField->moveCursorToEnd();
}

bool TSCController::passesKeysToInput(const QObject* view) {
    return qobject_cast<const QAbstractButton*>(view) || qobject_cast<const QLineEdit*>(view) ||
           qobject_cast<const QComboBox*>(view);
}

// On a calculator, typing reaches the expression whatever was clicked or tabbed to last: a
// printable key on a button, a pop-up or a result field goes to the end of the input, and Return
// there finishes. Space still presses a focused button; shortcuts keep their keys.
bool TSCController::typeIntoInput(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress || !passesKeysToInput(watched)) return false;
    auto* key = static_cast<QKeyEvent*>(event);
    if (key->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) return false;
    const bool finishing = key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter;
    const QString text = key->text();
    if (!finishing && (text.isEmpty() || !text.at(0).isPrint() || text == QStringLiteral(" "))) {
        return false;
    }
    m_ui->inputField->setFocus(Qt::OtherFocusReason);
    m_ui->inputField->moveCursorToEnd();
    QApplication::sendEvent(m_ui->inputField, key);
    return true;
}

void TSCController::refreshSideCalculators() {
    setResolutionIndex(m_resolutionIndex);
    updateDiskSpaceAndTranferTime();
    updateFilmStuff();
}

}  // namespace vantrel
