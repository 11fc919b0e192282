// What a page view keeps of a finding on its page.
#pragma once

#include <vector>

#include "platform/ui/web_view.h"
#include "text/text_finder.h"

namespace lirovan::platform {

struct WebView::Finding {
    explicit Finding(const QString& typed) : query(typed), finder(typed) {}

    QString query;
    text::TextFinder finder;
    int pieces = 0;
    int count = 0;
    int current = -1;  ///< from 0
    bool complete = false;
};

}  // namespace lirovan::platform
