#include "ui/frame/Credits.h"

#include "ui/dialogs/DialogPlacement.h"

#include <QDialogButtonBox>
#include <QIcon>
#include <QLabel>
#include <QTabWidget>
#include <QVBoxLayout>

namespace {

QLabel* Page(const QString& html)
{
    auto* label = new QLabel(html);
    label->setWordWrap(true);
    label->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    label->setMargin(14);
    label->setTextFormat(Qt::RichText);
    return label;
}

} // namespace

Credits::Credits(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("Credits"));
    setWindowTitle(QStringLiteral("Credits"));
    setWindowIcon(QIcon(QStringLiteral(":/icons/credits.svg")));

    auto* tabs = new QTabWidget(this);
    tabs->setObjectName(QStringLiteral("tbsCredits"));
    tabs->addTab(Page(QStringLiteral("<h3>Programming</h3><p>The Vantrel developers</p>"
                                     "<p>Vantrel is written in C++ with Qt.</p>")),
                 QStringLiteral("Programming"));
    tabs->addTab(
        Page(QStringLiteral("<h3>Art Work</h3><p>The Vantrel developers</p>"
                            "<p>Every icon, the splash window and the program's picture were "
                            "drawn for Vantrel.</p>")),
        QStringLiteral("Art Work"));
    tabs->addTab(
        Page(QStringLiteral("<h3>Special Thanks</h3><p>To the Qt project, and to everyone who "
                            "tried Vantrel's maps in their browsers and told the Vantrel "
                            "developers what broke.</p>")),
        QStringLiteral("Special Thanks"));

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(tabs, 1);
    layout->addWidget(buttons);
    resize(400, 280);
    DialogPlacement::CentreOnScreen(*this);
}
