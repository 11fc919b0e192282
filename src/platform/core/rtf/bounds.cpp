#include "platform/core/rtf/bounds.h"

#include <vector>

namespace lirovan::platform::rtf {

void joinLinesBeyond(Document& document, qsizetype lines) {
    constexpr qsizetype longLine = 2000;
    std::vector<Paragraph> kept;
    qsizetype line = 0, length = 0;
    for (Paragraph& paragraph : document.paragraphs) {
        const bool joins = line > lines && length > 0 && length < longLine;
        if (!joins) {
            kept.push_back({paragraph.format, {}});
            ++line;
            length = 0;
        }
        std::vector<Run>& runs = kept.back().runs;
        if (joins) runs.back().text += u' ';
        for (Run& run : paragraph.runs) {
            if (line >= lines)
                run.text.replace(QChar::LineSeparator, u' ');
            else
                line += run.text.count(QChar::LineSeparator);
            length += run.text.size();
            if (!runs.empty() && runs.back().format == run.format)
                runs.back().text += run.text;
            else
                runs.push_back(std::move(run));
        }
    }
    document.paragraphs = std::move(kept);
}

}  // namespace lirovan::platform::rtf
