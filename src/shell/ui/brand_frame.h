// Frame1 of the splash and the about window: the picture, the two names, and lines below them.
#pragma once

#include <QFrame>
#include <QLabel>
#include <QVBoxLayout>

namespace lirovan::shell {

class BrandFrame : public QFrame {
    Q_OBJECT

  public:
    explicit BrandFrame(QWidget* parent);

    QLabel* const imgLogo;
    QLabel* const lblCompanyProduct;
    QLabel* const lblProductName;

    /// Adds a line of secondary text below the names.
    void addLine(QLabel* line);
    /// Adds a line of secondary text at the lower edge, over the whole width.
    void addFootLine(QLabel* line);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    bool isDark() const;
    void colourLabels();

    QVBoxLayout* lines_;  // names and what belongs to them
    QVBoxLayout* all_;
};

/// The serif face of headings, `factor` times as large as the desktop's text.
QFont headingFont(double factor);

}  // namespace lirovan::shell
