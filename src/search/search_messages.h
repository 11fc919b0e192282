// What the search tells the reader: messages, and texts of the status bar.
#pragma once

#include <QString>
#include <QStringView>

#include "platform/core/dialogs.h"
#include "platform/core/result.h"
namespace lirovan::search {

platform::Message nothingTyped();
/// Cancel stops the search and deletes the letters.
platform::Message singleLetterTyped();
platform::Message nothingFound();
platform::Message failure(const platform::Error& error);

inline constexpr QStringView NothingFound = u"Gösterilecek başlık bulunamadı.";
/// lbl_tool while a search runs.
inline constexpr QStringView ProgressText = u"Araştırılıyor...";
QString foundText(qint64 headings);      ///< panel 2
QString hitsText(qint32 hits);           ///< panel 3
QString scanningText(QStringView word);  ///< lbl_tool while a page is marked
QString variantsText(qint64 variants);   ///< after the word variants were rebuilt

}  // namespace lirovan::search
