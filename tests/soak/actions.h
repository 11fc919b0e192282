// What the user does, each a small thing by mouse or keyboard on what the main window shows.
#pragma once

#include <functional>
#include <vector>

#include "soak/world.h"

namespace lirovan::soak {

struct Action {
    QString name;
    int weight;  ///< how often among the others
    /// Puts the user's input into the queue; details for the log.
    std::function<QString(World&)> act;
};

const std::vector<Action>& actions();

}  // namespace lirovan::soak
