// The style sheet that all page views of an engine give their pages, and the ground behind pages that are
// still to come.
#pragma once

#include <QColor>
#include <QObject>
#include <QString>

class QWebEngineProfile;

namespace lirovan::platform {

class PageStyle : public QObject {
    Q_OBJECT

  public:
    explicit PageStyle(QWebEngineProfile& profile);

    void set(const QString& sheet, const QColor& ground);
    const QString& sheet() const { return sheet_; }
    QColor ground() const { return ground_; }

  Q_SIGNALS:
    void changed();

  private:
    /// For the pages to come, before they are painted.
    void insert();

    QWebEngineProfile& profile_;
    QString sheet_;
    QColor ground_ = Qt::white;
};

}  // namespace lirovan::platform
