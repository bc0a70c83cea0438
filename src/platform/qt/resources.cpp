#include "platform/qt/resources.h"

#include <QByteArray>
#include <QFile>
#include <QtGlobal>
#include <algorithm>

/// What a library holds is read only after it was asked for; the asking works outside of namespaces alone.
static void OpenLibrary() {
    Q_INIT_RESOURCE(veltrix);
}

void veltrix::resources::Open() {
    OpenLibrary();
}

std::vector<std::byte> veltrix::resources::CoastlineBytes() {
    Open();
    QFile file(QStringLiteral(":/coastlines/coastlines.bin"));
    if (!file.open(QIODevice::ReadOnly)) return {};
    const QByteArray plain = qUncompress(file.readAll());
    std::vector<std::byte> bytes(static_cast<std::size_t>(plain.size()));
    std::ranges::transform(plain, bytes.begin(), [](char c) { return static_cast<std::byte>(c); });
    return bytes;
}
