// Is there a newer version? Reads the publisher's manifest, compares versions and tells the user.
//
// A manifest is an XML document whose root holds one element, and that one four elements with the parts of
// the version; their names do not matter:
//     <surumler><lirovan><a>5</a><b>1</b><c>1</c><d>6</d></lirovan></surumler>   is version 5.1.1.6
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringView>
#include <chrono>
#include <functional>
#include <optional>

#include "platform/core/dialogs.h"

namespace lirovan::shell {

inline constexpr QStringView ManifestPath = u"/download/prog/lirovanversion.xml";
inline constexpr QStringView InstallerPath = u"/download/prog/lirovan.exe";
inline constexpr std::chrono::milliseconds FirstCheck{7500};
inline constexpr std::chrono::milliseconds NextCheck{55000};
/// A manifest is some hundred bytes long; whatever is larger is none.
inline constexpr qint64 ManifestLimit = qint64{64} * 1024;

/// The version text of a manifest. Parts that are missing or hold no number count as 0, so a document of any
/// other shape gives "0.0.0.0". Nothing when it is not an XML document, or declares a document type: entities
/// are never expanded.
std::optional<QString> manifestVersion(const QByteArray& xml);

/// The longest decimal number at the start of `text`, leading blanks apart: "12a" gives 12, "x" gives 0.
float leadingNumber(QStringView text);

/// Versions are compared as texts, unit by unit: "5.1.2.0" is newer than "5.1.1.5", "5.1.1.10" is not.
bool isNewer(QStringView version, QStringView than);

platform::Message newVersionMessage(const QString& webSite);

/// Fetches the manifest without blocking; answers nothing when it could not be had.
class ManifestSource {
  public:
    using Answer = std::function<void(std::optional<QByteArray>)>;
    virtual ~ManifestSource() = default;
    virtual void fetch(Answer answer) = 0;
};

class UpdateCheck {
  public:
    /// Runs what it is given once the user can be spoken to.
    using Later = std::function<void(std::function<void()>)>;

    UpdateCheck(QString ownVersion, ManifestSource& source, platform::Dialogs& dialogs, QString webSite,
                Later whenIdle, std::function<void()> download)
        : ownVersion_(std::move(ownVersion)),
          source_(source),
          dialogs_(dialogs),
          webSite_(std::move(webSite)),
          whenIdle_(std::move(whenIdle)),
          download_(std::move(download)) {}

    /// One check. `finished` hears whether it is done for this run (true) or has to be repeated (false).
    void check(std::function<void(bool done)> finished);

  private:
    QString ownVersion_;
    ManifestSource& source_;
    platform::Dialogs& dialogs_;
    QString webSite_;
    Later whenIdle_;
    std::function<void()> download_;
};

}  // namespace lirovan::shell
