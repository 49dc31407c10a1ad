// The message sink of the desktop: a real message box, modal over the
// active window, with the icon, buttons and title the core asked for.
#pragma once

#include "ranvel/platform/sinks.h"

namespace ranvel {

class QtMessageSink : public MessageSink {
public:
    MsgAnswer Show(const Message& message) override;
};

}  // namespace ranvel
