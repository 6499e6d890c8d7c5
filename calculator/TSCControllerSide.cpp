// TSCController: the disk-space and film-length side calculators and their log entries.

#include "CaptionTables.h"
#include "SideCalculators.h"
#include "TSCController.h"
#include "ui_Calculator.h"

namespace vantrel {

void TSCController::setResultText(QString& text, QLineEdit* field, const QString& newText) {
    if (newText == text) return;
    text = newText;
    if (field) field->setText(newText);
}

void TSCController::setDiskSpacePT(const QString& text) {
    setResultText(m_diskSpacePT, ui().resultDiskSpaceField, text);
}

void TSCController::setTransferTimePT(const QString& text) {
    setResultText(m_transferTimePT, ui().resultTransferTimeField, text);
}

void TSCController::setDiskSpacePF(const QString& text) {
    setResultText(m_diskSpacePF, ui().resultDiskSpaceField2, text);
}

void TSCController::setTransferTimePF(const QString& text) {
    setResultText(m_transferTimePF, ui().resultTransferTimeField2, text);
}

void TSCController::setFilmLengthPT(const QString& text) {
    setResultText(m_filmLengthPT, ui().filmResultField, text);
}

void TSCController::setFilmLengthPF(const QString& text) {
    setResultText(m_filmLengthPF, ui().filmResultField2, text);
}

side_calculators::DiskChoice TSCController::diskChoice() const {
    using namespace captions;
    return {usableRow(kResolution, m_resolutionIndex, kFirstStartResolution),
            usableRow(kAspectRatio, m_aspectRatioIndex, kFirstStartAspectRatio),
            usableRow(kBitDepth, m_bitDepthIndex, kFirstStartBitDepth),
            usableRow(kTransferSpeed, m_transferSpeedIndex, kFirstStartTransferSpeed)};
}

int TSCController::filmRow() const {
    return captions::usableRow(captions::kFilm, m_filmIndex, captions::kFirstStartFilm);
}

int TSCController::systemRow() const {
    return captions::usableRow(captions::kSystem, m_systemIndex, captions::kFirstStartSystem);
}

void TSCController::updateDiskSpaceAndTranferTime() {
    const side_calculators::DiskChoice choice = diskChoice();
    const auto pt =
        side_calculators::diskSpaceAndTransferTime(m_calculator.cachedFramesPT(), choice);
    setDiskSpacePT(QString::fromStdString(pt.diskSpace));
    setTransferTimePT(QString::fromStdString(pt.transferTime));
    const auto pf =
        side_calculators::diskSpaceAndTransferTime(m_calculator.cachedFramesPF(), choice);
    setDiskSpacePF(QString::fromStdString(pf.diskSpace));
    setTransferTimePF(QString::fromStdString(pf.transferTime));
}

void TSCController::updateFilmStuff() {
    setFilmLengthPT(QString::fromStdString(
        side_calculators::filmLength(m_calculator.cachedFramesPT(), filmRow(), systemRow())));
    setFilmLengthPF(QString::fromStdString(
        side_calculators::filmLength(m_calculator.cachedFramesPF(), filmRow(), systemRow())));
}

// The entry describes the active reading's frame count, evaluated afresh as a plain number; the
// expression joins the history even when it does not evaluate.
void TSCController::pasteToLog(const std::function<std::string(const std::string&)>& entry) {
    const std::string typed = m_ui->inputField->text().toStdString();
    rememberExpression(beautified(typed));
    const auto frames = m_displayCalcModeTime ? m_calculator.evalPT(typed, DisplayStateNumber)
                                              : m_calculator.evalPF(typed, DisplayStateNumber);
    if (!frames) return;
    appendToLog(QString::fromStdString(entry(*frames)));
    if (!m_logExpanded) changeWindow(this);
}

void TSCController::pasteDiskSpaceToLog(QObject*) {
    pasteToLog([this](const std::string& frames) {
        const side_calculators::DiskFigures figures{
            (m_displayCalcModeTime ? m_diskSpacePT : m_diskSpacePF).toStdString(),
            (m_displayCalcModeTime ? m_transferTimePT : m_transferTimePF).toStdString()};
        return side_calculators::diskSpaceLogEntry(frames, figures, diskChoice());
    });
}

void TSCController::pasteFilmLengthToLog(QObject*) {
    pasteToLog([this](const std::string& frames) {
        const QString& length = m_displayCalcModeTime ? m_filmLengthPT : m_filmLengthPF;
        return side_calculators::filmLengthLogEntry(frames, length.toStdString(), filmRow());
    });
}

}  // namespace vantrel
