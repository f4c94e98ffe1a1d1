#include "SettingsPage.h"

#include "InfoCode.h"
#include "PageStyle.h"

#include "localisation/LanguageTable.h"
#include "mainwindow/PrivateMessages.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

#include <algorithm>

namespace {

QSpinBox* DaysBox(const char* name, int minimum, int maximum, QWidget* parent) {
    auto* box = new QSpinBox(parent);
    box->setObjectName(QString::fromLatin1(name));
    box->setRange(minimum, maximum);
    box->setSuffix(QString::fromUtf8(" days"));
    box->setMinimumWidth(110);
    return box;
}

} // namespace

SettingsPage::SettingsPage(PluginPageId id, HostWindow host, QWidget* parent)
    : PluginPage(PageKind::Settings, id, parent), m_host(std::move(host)),
      m_languages(LanguageChoices::Available()) {
    auto* layout = new QVBoxLayout(this);
    PageStyle::Dress(this, layout);
    layout->addWidget(PageStyle::Heading(QString::fromUtf8("Settings"), this));
    layout->addWidget(PageStyle::Intro(
        QString::fromUtf8("Changes take effect when you apply them. The filter service keeps "
                          "them for every user of this computer."),
        this));

    QGroupBox* group = PageStyle::Group(QString::fromUtf8("Preferences"), this);
    auto* form = new QFormLayout(group);
    form->setHorizontalSpacing(PageStyle::Spacing * 2);
    form->setVerticalSpacing(PageStyle::Spacing);
    // Short values in short fields: a day count stretched across the page reads badly.
    form->setFieldGrowthPolicy(QFormLayout::FieldsStayAtSizeHint);
    form->setLabelAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    m_autoUpgrade = new QCheckBox(QString::fromUtf8("Check for updates automatically"), group);
    m_autoUpgrade->setObjectName(QString::fromLatin1("autoUpgrade"));
    m_period = DaysBox("upgradePeriod", 1, 365, group);
    m_history = DaysBox("historyDays", 1, 3650, group);
    m_language = new QComboBox(group);
    m_language->setObjectName(QString::fromLatin1("language"));
    m_language->setMinimumWidth(220);
    for (const LanguageChoice& choice : m_languages)
        m_language->addItem(choice.label, QVariant::fromValue(choice.id));
    form->addRow(QString::fromUtf8("Updates"), m_autoUpgrade);
    form->addRow(QString::fromUtf8("Check every"), m_period);
    form->addRow(QString::fromUtf8("Keep history for"), m_history);
    form->addRow(QString::fromUtf8("Language"), m_language);
    for (QWidget* child : group->findChildren<QWidget*>()) {
        QFont font = child->font();
        font.setBold(false);
        child->setFont(font);
    }
    layout->addWidget(group);

    m_configPath = PageStyle::Note(this);
    m_configPath->setObjectName(QString::fromLatin1("configPath"));
    m_configPath->setTextInteractionFlags(Qt::TextSelectableByMouse);
    layout->addWidget(m_configPath);
    layout->addStretch(1);

    auto* buttons = new QHBoxLayout;
    m_message = PageStyle::Note(this);
    m_message->setObjectName(QString::fromLatin1("message"));
    m_revert = new QPushButton(QString::fromUtf8("Undo changes"), this);
    m_revert->setObjectName(QString::fromLatin1("revert"));
    m_apply = new QPushButton(QString::fromUtf8("Apply"), this);
    m_apply->setObjectName(QString::fromLatin1("apply"));
    m_apply->setDefault(true);
    buttons->addWidget(m_message, 1);
    buttons->addWidget(m_revert);
    buttons->addWidget(m_apply);
    layout->addLayout(buttons);

    const auto edited = [this] {
        m_message->clear();
        UpdateButtons();
    };
    connect(m_autoUpgrade, &QCheckBox::toggled, this, edited);
    connect(m_period, &QSpinBox::valueChanged, this, edited);
    connect(m_history, &QSpinBox::valueChanged, this, edited);
    connect(m_language, &QComboBox::currentIndexChanged, this, edited);
    connect(m_revert, &QPushButton::clicked, this, [this] { Load(); });
    connect(m_apply, &QPushButton::clicked, this, [this] { Apply(); });

    Show(m_loaded);
    UpdateButtons();
}

void SettingsPage::Activate() {
    PluginPage::Activate();
    // The first showing reads the settings; later ones keep edits that are not applied yet.
    if (!m_everLoaded || !Dirty())
        Load();
}

void SettingsPage::LanguageChanged(const QString& name) {
    if (m_everLoaded && !Dirty()) {
        m_loaded.language = LanguageTable::IdFromName(stdstr(name.toStdU16String()));
        Show(m_loaded);
    }
}

SettingsPage::Values SettingsPage::ReadHost() const {
    Values values;
    values.autoUpgrade = m_host.GetValue(InfoCode::AutoUpgrade) != 0;
    values.upgradePeriod = static_cast<int>(m_host.GetValue(InfoCode::UpgradePeriod));
    values.historyDays = static_cast<int>(m_host.GetValue(InfoCode::HistoryDays));
    bool ok = false;
    const std::uint32_t language = m_host.GetText(InfoCode::Language).trimmed().toUInt(&ok);
    values.language = ok && language != 0 ? language : LanguageTable::DefaultId;
    return values;
}

void SettingsPage::Load() {
    m_message->clear();
    if (!m_host.Present()) {
        m_message->setText(QString::fromUtf8("The settings cannot be reached."));
        setEnabled(false);
        return;
    }
    m_loaded = ReadHost();
    m_everLoaded = true;
    const QString configPath = m_host.GetText(InfoCode::ConfigPath);
    m_configPath->setText(
        configPath.isEmpty()
            ? QString()
            : QString::fromUtf8("The filter service keeps its data in %1.").arg(configPath));
    Show(m_loaded);
    // A value outside what the boxes take is shown at the nearest end; that is what counts
    // as loaded, so that the page does not open with changes the user did not make.
    m_loaded = Shown();
    UpdateButtons();
}

void SettingsPage::Apply() {
    if (!m_host.Present())
        return;
    const Values values = Shown();
    m_host.SetValue(InfoCode::AutoUpgrade, values.autoUpgrade ? 1 : 0);
    m_host.SetValue(InfoCode::UpgradePeriod, values.upgradePeriod);
    m_host.SetValue(InfoCode::HistoryDays, values.historyDays);
    const bool newLanguage = values.language != m_loaded.language;
    if (newLanguage)
        m_host.SetText(InfoCode::Language, QString::number(values.language));
    m_host.SetValue(InfoCode::NotifyService, 0);
    if (newLanguage)
        m_host.ChangeLanguage(values.language);
    Load();
    m_message->setText(QString::fromUtf8("Your settings are saved."));
}

bool SettingsPage::Dirty() const {
    return m_everLoaded && Shown() != m_loaded;
}

PrivateMessageEvent::Result SettingsPage::OnPrivateMessage(int message,
                                                           PrivateMessageEvent::WParam /*wParam*/,
                                                           PrivateMessageEvent::LParam /*lParam*/) {
    if (message != WM_QG_CONFIG_CHANGED || !m_host.Present())
        return 0;
    if (!Dirty()) {
        Load();
        return 0;
    }
    // The user's edits stay; they are now measured against what the service holds.
    m_loaded = ReadHost();
    m_message->setText(
        QString::fromUtf8("The settings were changed meanwhile; Undo changes shows the new ones."));
    UpdateButtons();
    return 0;
}

SettingsPage::Values SettingsPage::Shown() const {
    Values values;
    values.autoUpgrade = m_autoUpgrade->isChecked();
    values.upgradePeriod = m_period->value();
    values.historyDays = m_history->value();
    values.language = m_language->currentData().toUInt();
    return values;
}

void SettingsPage::Show(const Values& values) {
    const QSignalBlocker blockAuto(m_autoUpgrade);
    const QSignalBlocker blockPeriod(m_period);
    const QSignalBlocker blockHistory(m_history);
    const QSignalBlocker blockLanguage(m_language);
    m_autoUpgrade->setChecked(values.autoUpgrade);
    m_period->setValue(values.upgradePeriod);
    m_history->setValue(values.historyDays);
    SelectLanguage(values.language);
    UpdateButtons();
}

void SettingsPage::SelectLanguage(std::uint32_t id) {
    int index = m_language->findData(QVariant::fromValue(id));
    if (index < 0) {
        // A language without a file here still shows as what it is.
        m_language->addItem(QString::fromUtf16(LanguageTable::NameFromId(id).c_str()),
                            QVariant::fromValue(id));
        index = m_language->count() - 1;
    }
    m_language->setCurrentIndex(index);
}

void SettingsPage::UpdateButtons() {
    m_period->setEnabled(m_autoUpgrade->isChecked());
    const bool dirty = Dirty();
    m_apply->setEnabled(dirty);
    m_revert->setEnabled(dirty);
}
