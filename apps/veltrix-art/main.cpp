// Draws the pictures that the program brings with it: veltrix-art RESOURCES writes the files of
// RESOURCES/pictures, with the font in RESOURCES/fonts.

#include <QFontDatabase>
#include <QGuiApplication>
#include <cstdio>
#include <utility>

#include "pictures.h"

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    if (argc != 2) {
        std::fprintf(stderr, "usage: veltrix-art RESOURCES\n");
        return 64;
    }
    const QString folder = QString::fromLocal8Bit(argv[1]);
    const QStringList families = QFontDatabase::applicationFontFamilies(
        QFontDatabase::addApplicationFont(folder + QStringLiteral("/fonts/DejaVuSans.ttf")));
    if (families.isEmpty()) {
        std::fprintf(stderr, "veltrix-art: no font in %s/fonts\n", argv[1]);
        return 66;
    }
    using namespace veltrix::art;
    for (const auto& [name, image] : {std::pair{"polar.png", Polar(families.front())},
                                      {"splash.png", Splash(families.front())},
                                      {"icon.png", Icon()}}) {
        if (!image.save(folder + QStringLiteral("/pictures/") + QLatin1String(name), "PNG", 0)) {
            std::fprintf(stderr, "veltrix-art: cannot write %s\n", name);
            return 73;
        }
    }
    return 0;
}
