#pragma once
// All that a station needs of its computer, chosen by the program that builds the station.

#include "platform/clipboard.h"
#include "platform/clock.h"
#include "platform/computer.h"
#include "platform/event_loop.h"
#include "platform/files.h"
#include "platform/glyphs.h"
#include "platform/message_box.h"
#include "platform/pictures.h"
#include "platform/processes.h"
#include "platform/settings_store.h"
#include "platform/sockets.h"

namespace veltrix {

/// References to the services of one computer. REQUIRES that they outlive the station.
struct Platform {
    Clock& clock;
    EventLoop& loop;
    Files& files;
    Processes& processes;
    SettingsStore& store;
    MessageBox& messageBox;
    Pictures& pictures;
    Glyphs& glyphs;
    Sockets& sockets;
    Clipboard& clipboard;
    Computer& computer;
};

}  // namespace veltrix
