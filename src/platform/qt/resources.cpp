#include "platform/qt/resources.h"

#include <QtGlobal>

/// What a library holds is read only after it was asked for; the asking works outside of namespaces alone.
static void OpenLibrary() {
    Q_INIT_RESOURCE(veltrix);
}

void veltrix::resources::Open() {
    OpenLibrary();
}
