#include "LanguageChoices.h"

#include "foundation/SystemPaths.h"
#include "localisation/LanguageTable.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTextStream>

#include <dlfcn.h>

#include <algorithm>

namespace {

struct GeneralSection {
    QString name;
    QString englishName;
};

// The keys Name and EnglishName of the section "General" of a language file.
GeneralSection ReadGeneral(const QString& path) {
    GeneralSection general;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return general;
    QTextStream in(&file);
    bool inGeneral = false;
    while (!in.atEnd()) {
        const QString line = in.readLine().trimmed();
        if (line.startsWith(QLatin1Char('['))) {
            if (inGeneral)
                break;
            inGeneral = line.compare(QLatin1String("[General]"), Qt::CaseInsensitive) == 0;
            continue;
        }
        const qsizetype equals = line.indexOf(QLatin1Char('='));
        if (!inGeneral || equals <= 0)
            continue;
        const QString key = line.left(equals).trimmed();
        const QString value = line.mid(equals + 1).trimmed();
        if (key.compare(QLatin1String("Name"), Qt::CaseInsensitive) == 0)
            general.name = value;
        else if (key.compare(QLatin1String("EnglishName"), Qt::CaseInsensitive) == 0)
            general.englishName = value;
    }
    return general;
}

// The id of a file's English name. The table knows US English as "English (US)"; a file
// that calls itself "English" is that language. Any other name outside the table has none.
std::uint32_t IdOfEnglishName(const QString& englishName) {
    const stdstr name = stdstr(englishName.toStdU16String());
    for (const LanguageTable::Entry& entry : LanguageTable::Entries()) {
        if (name == entry.name)
            return entry.id;
    }
    return englishName == QLatin1String("English") ? LanguageTable::DefaultId : 0;
}

} // namespace

std::vector<LanguageChoice> LanguageChoices::Available() {
    const QString programFolder = QString::fromStdString(SystemPaths::ProgramFolder());
    for (const QString& folder : {programFolder, LibraryFolder()}) {
        if (folder.isEmpty())
            continue;
        std::vector<LanguageChoice> choices = FromFolder(folder + QLatin1String("/QGSaLangs"));
        if (!choices.empty())
            return choices;
    }
    return FromTable();
}

std::vector<LanguageChoice> LanguageChoices::FromFolder(const QString& folder) {
    std::vector<LanguageChoice> choices;
    const QDir dir(folder);
    const QStringList files =
        dir.entryList({QString::fromLatin1("*.ini")}, QDir::Files, QDir::Name);
    for (const QString& file : files) {
        const GeneralSection general = ReadGeneral(dir.filePath(file));
        const std::uint32_t id = IdOfEnglishName(general.englishName);
        const bool taken =
            std::any_of(choices.begin(), choices.end(),
                        [id](const LanguageChoice& choice) { return choice.id == id; });
        if (id == 0 || taken)
            continue;
        LanguageChoice choice;
        choice.id = id;
        if (general.name.isEmpty() || general.name == general.englishName)
            choice.label = general.englishName;
        else
            choice.label =
                general.name + QLatin1String(" (") + general.englishName + QLatin1Char(')');
        choices.push_back(choice);
    }
    return choices;
}

std::vector<LanguageChoice> LanguageChoices::FromTable() {
    std::vector<LanguageChoice> choices;
    for (const LanguageTable::Entry& entry : LanguageTable::Entries())
        choices.push_back(LanguageChoice{entry.id, QString::fromUtf16(entry.name)});
    return choices;
}

QString LanguageChoices::LibraryFolder() {
    Dl_info info{};
    if (dladdr(reinterpret_cast<const void*>(&LanguageChoices::LibraryFolder), &info) == 0 ||
        info.dli_fname == nullptr)
        return QString();
    return QFileInfo(QString::fromLocal8Bit(info.dli_fname)).absolutePath();
}
