// "Kaldığınız yer: <konu> – <kitap>" over the start page, with a button that goes on there.
#pragma once

#include <QFrame>

namespace lirovan::desk {

class ContinueStrip : public QFrame {
    Q_OBJECT

  public:
    ContinueStrip(const QString& heading, const QString& bookTitle, QWidget* parent = nullptr);

  Q_SIGNALS:
    void continueWanted();
    void closed();
};

}  // namespace lirovan::desk
