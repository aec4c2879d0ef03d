#pragma once

#include <QDirIterator>
#include <QFontDatabase>
#include <vector>

namespace varnhold::testing {

// Fonts that desktops come with, where Debian's packages put them, for as long as it lives: a test
// for which they aren't meant shall not see them. Those that this machine hasn't are passed over;
// VARNHOLD_FONTS names another folder to look in.
class MoreFonts final {
public:
    MoreFonts() {
        QStringList folders{QStringLiteral("/usr/share/fonts/truetype/noto"),
                            QStringLiteral("/usr/share/fonts/truetype/droid"),
                            QStringLiteral("/usr/share/fonts/opentype/cantarell"),
                            QStringLiteral("/usr/share/fonts/opentype/inter"),
                            QStringLiteral("/usr/share/fonts/opentype/noto")};
        if (const QString more = qEnvironmentVariable("VARNHOLD_FONTS"); !more.isEmpty()) {
            folders.append(more);
        }
        const QStringList names{QStringLiteral("NotoSans-*.ttf"),
                                QStringLiteral("NotoSansCJK*.ttc"),
                                QStringLiteral("DroidSansFallback*.ttf"),
                                QStringLiteral("Cantarell-*.otf"), QStringLiteral("Inter-*.otf")};
        for (const QString& folder : folders) {
            for (QDirIterator files(folder, names, QDir::Files, QDirIterator::Subdirectories);
                 files.hasNext();) {
                loaded_.push_back(QFontDatabase::addApplicationFont(files.next()));
            }
        }
    }
    ~MoreFonts() {
        for (const int font : loaded_) {
            QFontDatabase::removeApplicationFont(font);
        }
    }
    MoreFonts(const MoreFonts&) = delete;
    MoreFonts& operator=(const MoreFonts&) = delete;

private:
    std::vector<int> loaded_;
};

} // namespace varnhold::testing
