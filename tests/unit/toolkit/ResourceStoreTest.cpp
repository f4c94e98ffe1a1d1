// The artwork by number: every id that the artwork list names loads at its listed size,
// a missing id gives a null picture and no crash, and sounds go through the player seam.

#include "toolkit/ResourceStore.h"
#include "RecordingSoundPlayer.h"
#include "ToolkitTestApp.h"

#include <QDir>
#include <QFile>
#include <QMovie>
#include <QRegularExpression>
#include <QTextStream>

#include <gtest/gtest.h>

namespace {

struct ListedArtwork {
    QString kind; // "Bitmaps", "Icons", "Animation", "Sounds"
    QString id;
    QSize size;
};

// Reads the tables of resources/ARTWORK.md, so that the test follows the artwork list
// instead of repeating it.
std::vector<ListedArtwork> ReadArtworkList() {
    QFile file(QStringLiteral(QG_SOURCE_DIR "/resources/ARTWORK.md"));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly | QIODevice::Text));
    std::vector<ListedArtwork> items;
    QString section;
    const QRegularExpression row(QStringLiteral("^\\| ([A-Za-z0-9_]+) \\| [^|]+ \\| ([^|]+) \\|"));
    const QRegularExpression size(QStringLiteral("^(\\d+) x (\\d+)$"));
    QTextStream in(&file);
    while (!in.atEnd()) {
        const QString line = in.readLine();
        if (line.startsWith(QStringLiteral("## "))) {
            section = line.mid(3).trimmed();
            continue;
        }
        const auto match = row.match(line);
        if (!match.hasMatch() || match.captured(1) == QStringLiteral("Id"))
            continue;
        ListedArtwork item{section, match.captured(1), {}};
        const auto sizeMatch = size.match(match.captured(2).trimmed());
        if (sizeMatch.hasMatch())
            item.size = QSize(sizeMatch.captured(1).toInt(), sizeMatch.captured(2).toInt());
        items.push_back(item);
    }
    return items;
}

class ResourceStoreTest : public ::testing::Test {
protected:
    void SetUp() override { ToolkitTestApp(); }
};

// The list and the folders must name the same pictures, or the tests below would pass over
// a picture that the list forgot (or fail to read the list at all).
TEST_F(ResourceStoreTest, TheArtworkListNamesEveryBaseDrawingInTheFolders) {
    QStringList listedBitmaps, listedIcons;
    int animations = 0, sounds = 0;
    for (const auto& item : ReadArtworkList()) {
        if (item.kind == QStringLiteral("Bitmaps"))
            listedBitmaps.append(item.id);
        else if (item.kind == QStringLiteral("Icons"))
            listedIcons.append(item.id);
        animations += item.kind == QStringLiteral("Animation");
        sounds += item.kind == QStringLiteral("Sounds");
    }
    const auto baseNames = [](const QString& folder) {
        QStringList names;
        const QRegularExpression base(QStringLiteral("^([A-Za-z0-9_]+)\\.png$"));
        for (const QString& file : QDir(folder).entryList(QDir::Files)) {
            const auto match = base.match(file);
            if (match.hasMatch())
                names.append(match.captured(1));
        }
        return names;
    };
    listedBitmaps.sort();
    listedIcons.sort();
    QStringList bitmapFiles = baseNames(QStringLiteral(":/qg/bitmaps"));
    QStringList iconFiles = baseNames(QStringLiteral(":/qg/icons"));
    bitmapFiles.sort();
    iconFiles.sort();
    EXPECT_FALSE(listedBitmaps.isEmpty());
    EXPECT_EQ(listedBitmaps, bitmapFiles);
    EXPECT_EQ(listedIcons, iconFiles);
    EXPECT_EQ(animations, 1);
    EXPECT_EQ(sounds, QDir(QStringLiteral(":/qg/sounds")).entryList(QDir::Files).size());
}

TEST_F(ResourceStoreTest, EveryListedBitmapLoadsAtItsListedSize) {
    for (const auto& item : ReadArtworkList()) {
        if (item.kind != QStringLiteral("Bitmaps"))
            continue;
        bool numeric = false;
        const int id = item.id.toInt(&numeric);
        const QPixmap pixmap =
            numeric ? ResourceStore::Bitmap(id, 1.0) : ResourceStore::Bitmap(item.id, 1.0);
        ASSERT_FALSE(pixmap.isNull()) << item.id.toStdString();
        EXPECT_EQ(pixmap.size(), item.size) << item.id.toStdString();
        EXPECT_EQ(pixmap.devicePixelRatio(), 1.0);
    }
}

TEST_F(ResourceStoreTest, TheDoubleDrawingIsTakenOnAHighDensityScreen) {
    const QPixmap pixmap = ResourceStore::Bitmap(208, 2.0);
    ASSERT_FALSE(pixmap.isNull());
    EXPECT_EQ(pixmap.size(), QSize(584, 138));
    EXPECT_EQ(pixmap.devicePixelRatio(), 2.0);
    EXPECT_EQ(pixmap.deviceIndependentSize(), QSizeF(292, 69));
    EXPECT_EQ(ResourceStore::BitmapSize(208), QSize(292, 69));
}

TEST_F(ResourceStoreTest, EveryListedIconLoadsWithItsExactSizes) {
    for (const auto& item : ReadArtworkList()) {
        if (item.kind != QStringLiteral("Icons"))
            continue;
        const QIcon icon = ResourceStore::Icon(item.id.toInt());
        ASSERT_FALSE(icon.isNull()) << item.id.toStdString();
        const auto sizes = icon.availableSizes();
        EXPECT_TRUE(sizes.contains(item.size)) << item.id.toStdString();
        EXPECT_TRUE(sizes.contains(QSize(16, 16)));
        EXPECT_TRUE(sizes.contains(QSize(32, 32)));
    }
    const auto appSizes = ResourceStore::Icon(128).availableSizes();
    EXPECT_TRUE(appSizes.contains(QSize(256, 256)));
    EXPECT_TRUE(appSizes.contains(QSize(48, 48)));
}

TEST_F(ResourceStoreTest, AnIconForAnExactSizeIsTheDrawingForThatSize) {
    QImage drawn(QStringLiteral(QG_SOURCE_DIR "/resources/icons/237-22.png"));
    drawn = drawn.convertToFormat(QImage::Format_ARGB32);
    const QImage fromIcon = ResourceStore::Icon(237)
                                .pixmap(QSize(22, 22), 1.0)
                                .toImage()
                                .convertToFormat(QImage::Format_ARGB32);
    EXPECT_EQ(fromIcon, drawn);
}

TEST_F(ResourceStoreTest, TheAnimationLoadsAsAMovie) {
    EXPECT_EQ(ResourceStore::MoviePath(301, 1.0), QStringLiteral(":/qg/animations/301.gif"));
    EXPECT_EQ(ResourceStore::MoviePath(301, 2.0), QStringLiteral(":/qg/animations/301@2x.gif"));
    const auto movie = ResourceStore::Movie(301);
    ASSERT_NE(movie, nullptr);
    EXPECT_TRUE(movie->isValid());
    EXPECT_GT(movie->frameCount(), 1);
    ASSERT_TRUE(movie->jumpToFrame(0));
    EXPECT_EQ(movie->currentImage().size(), QSize(200, 120));
    const auto doubled = ResourceStore::Movie(301, 2.0);
    ASSERT_NE(doubled, nullptr);
    ASSERT_TRUE(doubled->jumpToFrame(0));
    EXPECT_EQ(doubled->currentImage().size(), QSize(400, 240));
}

TEST_F(ResourceStoreTest, EveryListedSoundIsAWaveFile) {
    for (const auto& item : ReadArtworkList()) {
        if (item.kind != QStringLiteral("Sounds"))
            continue;
        const QByteArray data = ResourceStore::SoundData(item.id.toInt());
        ASSERT_GT(data.size(), 44) << item.id.toStdString();
        EXPECT_EQ(data.left(4), QByteArray("RIFF"));
        EXPECT_EQ(data.mid(8, 4), QByteArray("WAVE"));
    }
}

TEST_F(ResourceStoreTest, AMissingIdGivesNullPicturesAndNoCrash) {
    EXPECT_TRUE(ResourceStore::Bitmap(257).isNull());
    EXPECT_TRUE(ResourceStore::Bitmap(0).isNull());
    EXPECT_TRUE(ResourceStore::Bitmap(-3).isNull());
    EXPECT_TRUE(ResourceStore::Bitmap(QStringLiteral("NO_SUCH_PICTURE")).isNull());
    EXPECT_TRUE(ResourceStore::Bitmap(QStringLiteral("../icons/128")).isNull());
    EXPECT_TRUE(ResourceStore::BitmapSize(258).isEmpty());
    EXPECT_TRUE(ResourceStore::Icon(999).isNull());
    EXPECT_TRUE(ResourceStore::MoviePath(302).isEmpty());
    EXPECT_EQ(ResourceStore::Movie(302), nullptr);
    EXPECT_TRUE(ResourceStore::SoundData(207).isEmpty());
}

TEST_F(ResourceStoreTest, PlaySoundGoesToThePlayerInPlace) {
    RecordingSoundPlayer player;
    EXPECT_TRUE(ResourceStore::PlaySound(206));
    player.answer = false;
    EXPECT_FALSE(ResourceStore::PlaySound(204));
    EXPECT_EQ(player.played, (std::vector<int>{206, 204}));
}

TEST_F(ResourceStoreTest, TheRecorderPutsBackThePlayerBeforeIt) {
    RecordingSoundPlayer outer;
    {
        RecordingSoundPlayer inner;
        ResourceStore::PlaySound(205);
        EXPECT_EQ(inner.played, std::vector<int>{205});
    }
    ResourceStore::PlaySound(204);
    EXPECT_EQ(outer.played, std::vector<int>{204});
}

} // namespace
