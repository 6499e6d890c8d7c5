// TSCController: what the unit displays depend on (film gauge, sample rate) and whether the PT
// reading takes the exact NTSC rates; each choice is stored at once and shown again at start-up.

#include <QActionGroup>
#include <QSyntaxHighlighter>

#include "TSCController.h"

namespace vantrel {

namespace {

const QString kGaugeKey = QStringLiteral("FeetFramesGauge");
const QString kSampleRateKey = QStringLiteral("AudioSampleRate");
const QString kExactRatesKey = QStringLiteral("ExactNTSCRates");
const QString kWrapKey = QStringLiteral("WrapAt24Hours");

QString latin1(std::string_view text) {
    return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}

// An exclusive group of checkable items in a submenu, each tagged with what it chooses.
QList<QPointer<QAction>> addChoices(QMenu* menu, const QList<std::pair<QString, int>>& choices) {
    auto* group = new QActionGroup(menu);
    QList<QPointer<QAction>> items;
    for (const auto& [title, tag] : choices) {
        QAction* item = menu->addAction(title);
        item->setCheckable(true);
        item->setProperty("tag", tag);
        group->addAction(item);
        items << item;
    }
    return items;
}

void checkTagged(const QList<QPointer<QAction>>& items, int value) {
    for (const QPointer<QAction>& item : items) {
        if (item) item->setChecked(item->property("tag").toInt() == value);
    }
}

}  // namespace

void TSCController::restoreUnitChoices() {
    const units::Gauge* gauge =
        units::gaugeNamed(m_preferences.string(kGaugeKey).value_or(QString()).toStdString());
    m_unitChoice.gauge = gauge ? gauge : &units::kGauges.front();
    const int sampleRate = m_preferences.integer(kSampleRateKey);
    for (const int known : units::kSampleRates) {
        if (sampleRate == known) m_unitChoice.sampleRate = known;
    }
    m_calculator.setExactRates(m_preferences.integer(kExactRatesKey) != 0);
    m_calculator.setWrapsAt24Hours(m_preferences.integer(kWrapKey) != 0);
    checkUnitChoiceItems();
    showLazyResults(false);
}

void TSCController::setFeetGauge(const units::Gauge& gauge) {
    if (m_unitChoice.gauge == &gauge) return;
    m_unitChoice.gauge = &gauge;
    m_preferences.setValue(kGaugeKey, latin1(gauge.name));
    unitChoiceChanged();
}

void TSCController::setSampleRate(int sampleRate) {
    if (m_unitChoice.sampleRate == sampleRate) return;
    m_unitChoice.sampleRate = sampleRate;
    m_preferences.setValue(kSampleRateKey, sampleRate);
    unitChoiceChanged();
}

// The readings change, so both fields and both side calculators follow.
void TSCController::setExactRates(bool exact) {
    if (m_calculator.exactRates() == exact) return;
    m_calculator.setExactRates(exact);
    m_preferences.setValue(kExactRatesKey, exact ? 1 : 0);
    checkUnitChoiceItems();
    m_clean = false;
    showLazyResults(true);
    refreshSideCalculators();
}

// Only how the results are written changes; the side calculators keep their signed counts.
void TSCController::setWrapsAt24Hours(bool wraps) {
    if (m_calculator.wrapsAt24Hours() == wraps) return;
    m_calculator.setWrapsAt24Hours(wraps);
    m_preferences.setValue(kWrapKey, wraps ? 1 : 0);
    checkUnitChoiceItems();
    m_clean = false;
    showLazyResults(true);
}

// Unit literals in the input now stand for other frame counts: the colours and the results follow.
void TSCController::unitChoiceChanged() {
    checkUnitChoiceItems();
    showUnitToolTips();
    if (m_highlighter) m_highlighter->rehighlight();
    m_clean = false;
    showLazyResults(true);
    refreshSideCalculators();
}

void TSCController::addUnitChoiceItems(QMenu* menu) {
    menu->addSeparator();
    QList<std::pair<QString, int>> gauges;
    for (std::size_t row = 0; row < units::kGauges.size(); ++row) {
        gauges.append({latin1(units::kGauges[row].caption), static_cast<int>(row)});
    }
    m_gaugeItems = addChoices(menu->addMenu(tr("Film &Gauge for Feet+Frames")), gauges);
    for (const QPointer<QAction>& item : m_gaugeItems) {
        connect(item, &QAction::triggered, this,
                [this, item] { setFeetGauge(units::kGauges.at(item->property("tag").toUInt())); });
    }
    m_sampleRateItems =
        addChoices(menu->addMenu(tr("A&udio Sample Rate")),
                   {{tr("44.1 kHz"), 44100}, {tr("48 kHz"), 48000}, {tr("96 kHz"), 96000}});
    for (const QPointer<QAction>& item : m_sampleRateItems) {
        connect(item, &QAction::triggered, this,
                [this, item] { setSampleRate(item->property("tag").toInt()); });
    }
    m_exactRatesItem = menu->addAction(tr("E&xact NTSC Rates"));
    m_exactRatesItem->setShortcut(QKeySequence(tr("Ctrl+E")));
    m_exactRatesItem->setCheckable(true);
    connect(m_exactRatesItem, &QAction::triggered, this, [this](bool on) { setExactRates(on); });
    m_wrapItem = menu->addAction(tr("&Wrap at 24 Hours"));
    m_wrapItem->setShortcut(QKeySequence(tr("Ctrl+Shift+H")));
    m_wrapItem->setCheckable(true);
    connect(m_wrapItem, &QAction::triggered, this, [this](bool on) { setWrapsAt24Hours(on); });
    checkUnitChoiceItems();
}

void TSCController::checkUnitChoiceItems() {
    checkTagged(m_gaugeItems, static_cast<int>(m_unitChoice.gauge - units::kGauges.data()));
    checkTagged(m_sampleRateItems, m_unitChoice.sampleRate);
    if (m_exactRatesItem) m_exactRatesItem->setChecked(m_calculator.exactRates());
    if (m_wrapItem) m_wrapItem->setChecked(m_calculator.wrapsAt24Hours());
}

}  // namespace vantrel
