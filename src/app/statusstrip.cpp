#include "app/statusstrip.h"

#include "app/memorygauge.h"
#include "services/uitext.h"
#include "widgets/colour.h"
#include "widgets/gauge.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>

namespace wb
{

namespace
{

constexpr int MemoryInterval = 100; // ms
constexpr int StepInterval = 20;    // ms

} // namespace

StatusStrip::StatusStrip(QWidget *parent)
    : QWidget(parent), lblStatus(new QLabel(this)),
      prgProgress(new Gauge(QStringLiteral("prgProgress"), this)),
      prgMem(new Gauge(QStringLiteral("prgMem"), this))
{
    setObjectName(QStringLiteral("picStatus"));
    setAttribute(Qt::WA_StyledBackground);
    setFixedHeight(32);
    lblStatus->setObjectName(QStringLiteral("lblStatus"));
    lblStatus->setTextFormat(Qt::PlainText); // names may look like markup
    auto *memory = new QLabel(UiText(TextMemory), this);
    memory->setObjectName(QStringLiteral("lblMemory"));
    prgProgress->setFixedSize(260, 8);
    prgMem->setFixedSize(140, 8);
    ShowProgress(false);

    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(12, 0, 12, 0);
    row->setSpacing(10);
    row->addWidget(lblStatus, 1);
    row->addWidget(prgProgress);
    row->addSpacing(12);
    row->addWidget(memory);
    row->addWidget(prgMem);

    connect(&tmrMemory, &QTimer::timeout, this, [this] { ShowMemory(QueryMemoryStatus()); });
    tmrMemory.start(MemoryInterval);
}

void StatusStrip::ProgressStart(std::int32_t maximum, const QString &text)
{
    m_maximums.push_back(maximum);
    prgProgress->SetMaximum(maximum);
    lblStatus->setText(text);
    ShowProgress(true);
    m_sinceShown.invalidate();
    QCoreApplication::processEvents();
}

// Many items take less time than showing that they are done.
void StatusStrip::ProgressStep(std::int32_t value, const QString &text)
{
    const bool isNews = !m_sinceShown.isValid() || m_sinceShown.hasExpired(StepInterval);
    if (isNews || value == prgProgress->Maximum()) {
        prgProgress->SetValue(value);
        lblStatus->setText(text);
        m_sinceShown.start();
    }
    QCoreApplication::processEvents();
}

// The memory gauge's timer is an event that always comes.
void StatusStrip::ProgressWait()
{
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

void StatusStrip::ProgressClear()
{
    if (!m_maximums.empty())
        m_maximums.pop_back();
    const bool isInside = !m_maximums.empty(); // the job that goes on tells its value at its next step
    prgProgress->SetValue(0);
    prgProgress->SetMaximum(isInside ? m_maximums.back() : 1);
    lblStatus->clear();
    m_sinceShown.invalidate();
    ShowProgress(isInside);
}

// A bar that stands at nothing is only clutter.
void StatusStrip::ShowProgress(bool shown)
{
    prgProgress->setVisible(shown);
}

void StatusStrip::ShowMemory(const MemoryStatus &memory)
{
    const MemoryGauge gauge = GaugeOf(memory);
    prgMem->SetMaximum(gauge.Maximum);
    prgMem->SetValue(gauge.Value);
    prgMem->setToolTip(gauge.Tip);
    const std::int32_t colour = FromQColor(prgMem->BarColour());
    prgMem->SetBarColour(ToQColor(gauge.Blinks ? NextBlinkColour(colour) : SteadyGaugeColour()));
}

} // namespace wb
