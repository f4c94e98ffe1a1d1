#include "WizardOptionsPage.h"

#include "InfoCode.h"
#include "PageStyle.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QSpinBox>
#include <QVBoxLayout>

WizardOptionsPage::WizardOptionsPage(PluginPageId id, HostWindow host, QWidget* parent)
    : PluginPage(PageKind::WizardOptions, id, parent), m_host(std::move(host)) {
    auto* layout = new QVBoxLayout(this);
    PageStyle::Dress(this, layout);
    layout->addWidget(PageStyle::Heading(QString::fromUtf8("Updates and history"), this));
    layout->addWidget(PageStyle::Intro(
        QString::fromUtf8("Spam changes every day. Quillgate's updates teach it the new "
                          "tricks; its history lets you find a message it set aside."),
        this));

    QGroupBox* group = PageStyle::Group(QString::fromUtf8("Your choices"), this);
    auto* form = new QFormLayout(group);
    form->setHorizontalSpacing(PageStyle::Spacing * 2);
    form->setVerticalSpacing(PageStyle::Spacing);
    // Short values in short fields: a day count stretched across the page reads badly.
    form->setFieldGrowthPolicy(QFormLayout::FieldsStayAtSizeHint);
    m_autoUpgrade =
        new QCheckBox(QString::fromUtf8("Keep Quillgate up to date automatically"), group);
    m_autoUpgrade->setObjectName(QString::fromLatin1("autoUpgrade"));
    m_period = new QSpinBox(group);
    m_period->setObjectName(QString::fromLatin1("upgradePeriod"));
    m_period->setRange(1, 365);
    m_period->setSuffix(QString::fromUtf8(" days"));
    m_history = new QSpinBox(group);
    m_history->setObjectName(QString::fromLatin1("historyDays"));
    m_history->setRange(1, 3650);
    m_history->setSuffix(QString::fromUtf8(" days"));
    form->addRow(m_autoUpgrade);
    form->addRow(QString::fromUtf8("Check every"), m_period);
    form->addRow(QString::fromUtf8("Keep history for"), m_history);
    for (QWidget* child : group->findChildren<QWidget*>()) {
        QFont font = child->font();
        font.setBold(false);
        child->setFont(font);
    }
    layout->addWidget(group);

    m_note = PageStyle::Note(this);
    m_note->setObjectName(QString::fromLatin1("note"));
    layout->addWidget(m_note);
    layout->addStretch(1);

    Load();
    connect(m_autoUpgrade, &QCheckBox::toggled, this, [this](bool on) {
        m_period->setEnabled(on && m_host.Present());
        Store(InfoCode::AutoUpgrade, on ? 1 : 0);
    });
    connect(m_period, &QSpinBox::valueChanged, this,
            [this](int days) { Store(InfoCode::UpgradePeriod, days); });
    connect(m_history, &QSpinBox::valueChanged, this,
            [this](int days) { Store(InfoCode::HistoryDays, days); });
}

void WizardOptionsPage::Load() {
    if (!m_host.Present()) {
        m_autoUpgrade->setChecked(true);
        m_period->setValue(5);
        m_history->setValue(30);
        setEnabled(false);
        m_note->setText(QString::fromUtf8("These choices can be made later on the Settings page."));
        return;
    }
    m_autoUpgrade->setChecked(m_host.GetValue(InfoCode::AutoUpgrade) != 0);
    m_period->setValue(static_cast<int>(m_host.GetValue(InfoCode::UpgradePeriod)));
    m_history->setValue(static_cast<int>(m_host.GetValue(InfoCode::HistoryDays)));
    m_period->setEnabled(m_autoUpgrade->isChecked());
    m_note->setText(QString::fromUtf8("Press Finish to start filtering with these choices."));
}

void WizardOptionsPage::Store(int code, std::intptr_t value) {
    m_host.SetValue(code, value);
}
