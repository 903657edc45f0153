#include "ui/frame/frmSplash.h"

#include "core/base/ProductVersion.h"
#include "ui/frame/PictureStrip.h"

#include <QGuiApplication>
#include <QIcon>
#include <QLabel>
#include <QLinearGradient>
#include <QPainter>
#include <QScreen>
#include <QVBoxLayout>

frmSplash::frmSplash(QWidget* parent)
    : QWidget(parent, Qt::SplashScreen | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint),
      m_status(new QLabel(this)), m_progress(new PictureStrip(this))
{
    setObjectName(QStringLiteral("frmSplash"));
    setFixedSize(460, 270);

    auto* logo = new QLabel(this);
    logo->setPixmap(QIcon(QStringLiteral(":/icons/vantrel.svg")).pixmap(96, 96));
    auto* product = new QLabel(QStringLiteral("Vantrel"), this);
    product->setObjectName(QStringLiteral("lblProductName"));
    QFont big = product->font();
    big.setPointSize(30);
    big.setBold(true);
    product->setFont(big);
    auto* version = new QLabel(QStringLiteral("Version ") + ProductVersion::Text(), this);
    version->setObjectName(QStringLiteral("lblVersion"));
    auto* tagline = new QLabel(QStringLiteral("Image maps for the web"), this);
    QFont italic = tagline->font();
    italic.setItalic(true);
    tagline->setFont(italic);
    m_status->setObjectName(QStringLiteral("lblStatus"));
    m_progress->SetMaximum(12);

    for (QLabel* label : {product, version, tagline, m_status})
        label->setStyleSheet(QStringLiteral("color: white; background: transparent;"));

    auto* titles = new QVBoxLayout;
    titles->addStretch(1);
    titles->addWidget(product);
    titles->addWidget(version);
    titles->addWidget(tagline);
    titles->addStretch(1);
    auto* top = new QHBoxLayout;
    top->addWidget(logo);
    top->addSpacing(16);
    top->addLayout(titles, 1);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(24, 20, 24, 18);
    layout->addLayout(top, 1);
    layout->addWidget(m_status);
    layout->addWidget(m_progress);

    if (const QScreen* screen = QGuiApplication::primaryScreen()) {
        const QRect area = screen->availableGeometry();
        move(area.x() + (area.width() - width()) / 2, area.y() + (area.height() - height()) / 2);
    }
}

void frmSplash::Progress(const QString& Status, int Step, int Steps)
{
    m_status->setText(Status);
    m_progress->SetMaximum(Steps);
    m_progress->SetValue(Step);
    repaint();
}

void frmSplash::paintEvent(QPaintEvent*)
{
    QPainter p(this);
    QLinearGradient sky(0, 0, 0, height());
    sky.setColorAt(0.0, QColor(0, 80, 122));
    sky.setColorAt(1.0, QColor(0, 120, 180));
    p.fillRect(rect(), sky);
    // A faint dashed rectangle and circle: the shapes the program draws.
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(QPen(QColor(255, 255, 255, 60), 2, Qt::DashLine));
    p.drawRect(QRect(width() - 150, 18, 120, 80));
    p.drawEllipse(QRect(width() - 110, 60, 90, 90));
    p.setPen(QPen(QColor(255, 255, 255, 120), 1));
    p.drawRect(rect().adjusted(0, 0, -1, -1));
}
