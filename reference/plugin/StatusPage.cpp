#include "StatusPage.h"

#include "InfoCode.h"
#include "PageStyle.h"

#include "mainwindow/PrivateMessages.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QMetaObject>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

QLabel* NamedLabel(const char* name, QWidget* parent) {
    auto* label = new QLabel(parent);
    label->setObjectName(QString::fromLatin1(name));
    return label;
}

QLabel* Lamp(QWidget* parent) {
    auto* lamp = new QLabel(parent);
    lamp->setTextFormat(Qt::RichText);
    lamp->setFixedWidth(22);
    lamp->setAlignment(Qt::AlignCenter);
    return lamp;
}

QLabel* ValueLabel(const char* name, QWidget* parent) {
    QLabel* label = NamedLabel(name, parent);
    QFont font = PageStyle::Scaled(label->font(), 1.2);
    font.setBold(true);
    label->setFont(font);
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    label->setMinimumWidth(90);
    return label;
}

// An em dash: no count yet.
QString Dash() {
    return QString(QChar(0x2014));
}

} // namespace

StatusPage::StatusPage(PluginPageId id, HostWindow host, StatisticsFetcher::Query query,
                       QWidget* parent)
    : PluginPage(PageKind::Status, id, parent), m_host(std::move(host)) {
    BuildLayout();
    ShowService(std::nullopt);
    ShowFilterState();
    m_fetcher = std::make_unique<StatisticsFetcher>(
        std::move(query), [this](const StatisticsAnswer& answer) {
            // On the fetcher's thread: the page is reached through its own event queue only.
            QMetaObject::invokeMethod(
                this, [this, answer] { ShowAnswer(answer); }, Qt::QueuedConnection);
        });
}

StatusPage::~StatusPage() {
    m_fetcher.reset();
}

void StatusPage::BuildLayout() {
    auto* layout = new QVBoxLayout(this);
    PageStyle::Dress(this, layout);
    layout->addWidget(PageStyle::Heading(QString::fromUtf8("Status"), this));
    layout->addWidget(PageStyle::Intro(
        QString::fromUtf8("Quillgate examines the mail that your mail programs receive and "
                          "sets spam aside before you see it."),
        this));

    QGroupBox* protection = PageStyle::Group(QString::fromUtf8("Protection"), this);
    auto* protectionGrid = new QGridLayout(protection);
    protectionGrid->setHorizontalSpacing(PageStyle::Spacing);
    protectionGrid->setVerticalSpacing(PageStyle::Spacing);
    m_filterLamp = Lamp(protection);
    m_filterText = NamedLabel("filterState", protection);
    m_filterButton = new QPushButton(protection);
    m_filterButton->setObjectName(QString::fromLatin1("filterButton"));
    m_filterButton->setMinimumWidth(150);
    m_serviceLamp = Lamp(protection);
    m_serviceText = NamedLabel("serviceState", protection);
    protectionGrid->addWidget(m_filterLamp, 0, 0);
    protectionGrid->addWidget(m_filterText, 0, 1);
    protectionGrid->addWidget(m_filterButton, 0, 2, Qt::AlignRight);
    protectionGrid->addWidget(m_serviceLamp, 1, 0);
    protectionGrid->addWidget(m_serviceText, 1, 1, 1, 2);
    protectionGrid->setColumnStretch(1, 1);
    layout->addWidget(protection);

    QGroupBox* mail = PageStyle::Group(QString::fromUtf8("Mail checked"), this);
    auto* mailGrid = new QGridLayout(mail);
    mailGrid->setHorizontalSpacing(PageStyle::Spacing * 2);
    mailGrid->setVerticalSpacing(PageStyle::Spacing);
    m_examined = ValueLabel("examinedCount", mail);
    m_spam = ValueLabel("spamCount", mail);
    m_share = new QProgressBar(mail);
    m_share->setObjectName(QString::fromLatin1("spamShare"));
    m_share->setRange(0, 1000);
    m_share->setTextVisible(false);
    m_share->setMaximumHeight(14);
    m_shareText = NamedLabel("spamShareText", mail);
    m_shareText->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_shareText->setMinimumWidth(60);
    mailGrid->addWidget(new QLabel(QString::fromUtf8("Messages examined"), mail), 0, 0);
    mailGrid->addWidget(m_examined, 0, 2);
    mailGrid->addWidget(new QLabel(QString::fromUtf8("Spam caught"), mail), 1, 0);
    mailGrid->addWidget(m_spam, 1, 2);
    mailGrid->addWidget(new QLabel(QString::fromUtf8("Share of spam"), mail), 2, 0);
    mailGrid->addWidget(m_share, 2, 1);
    mailGrid->addWidget(m_shareText, 2, 2);
    mailGrid->setColumnStretch(1, 1);
    layout->addWidget(mail);

    m_updated = PageStyle::Note(this);
    m_updated->setObjectName(QString::fromLatin1("updated"));
    layout->addWidget(m_updated);
    layout->addStretch(1);

    // Plain widget font for the group contents: the group titles alone are bold.
    for (QWidget* child :
         {static_cast<QWidget*>(m_filterText), static_cast<QWidget*>(m_serviceText),
          static_cast<QWidget*>(m_filterButton)}) {
        QFont font = child->font();
        font.setBold(false);
        child->setFont(font);
    }
    for (QLabel* caption : mail->findChildren<QLabel*>()) {
        if (caption != m_examined && caption != m_spam) {
            QFont font = caption->font();
            font.setBold(false);
            caption->setFont(font);
        }
    }

    m_examined->setText(Dash());
    m_spam->setText(Dash());
    m_shareText->setText(Dash());
    m_share->setValue(0);

    connect(m_filterButton, &QPushButton::clicked, this, [this] { ToggleFilter(); });
}

void StatusPage::Activate() {
    PluginPage::Activate();
    Refresh();
}

void StatusPage::Refresh() {
    ShowFilterState();
    m_fetcher->Request();
}

PrivateMessageEvent::Result StatusPage::OnPrivateMessage(int message,
                                                         PrivateMessageEvent::WParam wParam,
                                                         PrivateMessageEvent::LParam /*lParam*/) {
    switch (message) {
    case WM_QG_PAGE_INIT:
    case WM_QG_PAGE_SHOW:
    case WM_QG_PAGE_REFRESH:
        Refresh();
        break;
    case WM_QG_RPC_STATUS:
        // wParam 1: the service went away; 0: it is back.
        ShowService(wParam == 0);
        if (wParam == 0)
            Refresh();
        break;
    default:
        break;
    }
    return 0;
}

void StatusPage::ShowFilterState() {
    if (m_host.Present())
        m_filterOn = m_host.GetValue(InfoCode::FilterOn) != 0;
    if (!m_filterOn) {
        m_filterLamp->setText(PageStyle::Lamp(PageStyle::Unknown()));
        m_filterText->setText(QString::fromUtf8("Spam filtering state unknown"));
        m_filterButton->setText(QString::fromUtf8("Turn filtering on"));
        m_filterButton->setEnabled(false);
        return;
    }
    const bool on = *m_filterOn;
    m_filterLamp->setText(PageStyle::Lamp(on ? PageStyle::Good() : PageStyle::Bad()));
    m_filterText->setText(on ? QString::fromUtf8("Spam filtering is on")
                             : QString::fromUtf8("Spam filtering is off"));
    m_filterButton->setText(on ? QString::fromUtf8("Turn filtering off")
                               : QString::fromUtf8("Turn filtering on"));
    m_filterButton->setEnabled(m_host.Present() && m_serviceUp.value_or(true));
}

void StatusPage::ShowService(std::optional<bool> up) {
    m_serviceUp = up;
    if (!up) {
        m_serviceLamp->setText(PageStyle::Lamp(PageStyle::Unknown()));
        m_serviceText->setText(QString::fromUtf8("Checking the filter service\u2026"));
    } else if (*up) {
        m_serviceLamp->setText(PageStyle::Lamp(PageStyle::Good()));
        m_serviceText->setText(QString::fromUtf8("Filter service is running"));
    } else {
        m_serviceLamp->setText(PageStyle::Lamp(PageStyle::Bad()));
        m_serviceText->setText(QString::fromUtf8("Filter service is not reachable"));
    }
    m_filterButton->setEnabled(m_host.Present() && m_filterOn.has_value() && up.value_or(true));
    ShowUpdated();
}

void StatusPage::ShowAnswer(const StatisticsAnswer& answer) {
    if (answer.ServiceDown())
        ShowService(false);
    else if (answer.ServiceUp())
        ShowService(true);
    if (!answer.answered)
        return;
    m_examined->setText(PageStyle::Count(answer.examined));
    m_spam->setText(PageStyle::Count(answer.spam));
    if (answer.examined > 0) {
        const double share =
            std::min(1.0, static_cast<double>(std::max(0, answer.spam)) / answer.examined);
        m_share->setValue(static_cast<int>(share * 1000.0 + 0.5));
        m_shareText->setText(QLocale().toString(share * 100.0, 'f', 1) + QString::fromUtf8(" %"));
    } else {
        m_share->setValue(0);
        m_shareText->setText(Dash());
    }
    m_countsTime = QDateTime::currentDateTime();
    ShowUpdated();
}

void StatusPage::ShowUpdated() {
    if (!m_countsTime.isValid()) {
        m_updated->setText(QString());
        return;
    }
    const QString time = QLocale().toString(m_countsTime.time(), QLocale::ShortFormat);
    if (m_serviceUp.value_or(true))
        m_updated->setText(QString::fromUtf8("Counts as of %1.").arg(time));
    else
        m_updated->setText(
            QString::fromUtf8("Counts as of %1; the filter service is not reachable now.")
                .arg(time));
}

void StatusPage::ToggleFilter() {
    if (!m_filterOn || !m_host.Present())
        return;
    // Code 7 with 1 asks the user and turns filtering off; any other value turns it on.
    m_host.SetValue(InfoCode::FilterState, *m_filterOn ? 1 : 0);
    ShowFilterState();
}
