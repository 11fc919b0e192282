// What the help window shows for each of its three buttons.
#pragma once

#include <QStringView>
#include <optional>
#include <span>

#include "browse/window_ports.h"
#include "platform/core/twips.h"

namespace lirovan::shell {

struct HelpTopic {
    QStringView button;              ///< control name, "cmdKitap"
    QStringView captionLabel;        ///< control name of the caption beside it, "Label1"
    QStringView title;               ///< that caption, and the text of lblKBaslik
    QStringView textLabel;           ///< control name of the text shown, "lblKitaplar"
    QStringView textFile;            ///< the text, in the help resources
    QStringView icon;                ///< icon key
    std::optional<browse::Tab> tab;  ///< to which the browse window is switched
};

std::span<const HelpTopic> helpTopics();

/// The text shown when the window opens.
inline constexpr QStringView HelpPrompt = u"      Yukarıdaki konulardan birini seçin.";

/// Left and top of the help window: at the right edge of the main window.
inline platform::Twips helpLeft(platform::Twips mainWidth, platform::Twips helpWidth) {
    return mainWidth - helpWidth - platform::Twips{120};
}
inline constexpr platform::Twips HelpTop{20};

}  // namespace lirovan::shell
