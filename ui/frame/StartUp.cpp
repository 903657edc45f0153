#include "ui/frame/StartUp.h"

#include "core/forms/HelpFile.h"
#include "ui/dialogs/DialogPlacement.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

StartUp::StartUp(ModalUi& ui, QWidget* parent)
    : QDialog(parent), m_ui(ui),
      m_newMap(new QRadioButton(QStringLiteral("Start a new image map.")))
{
    setObjectName(QStringLiteral("StartUp"));
    setWindowTitle(QStringLiteral("Vantrel"));

    auto* greetings = new QGroupBox(QStringLiteral("Greetings"), this);
    greetings->setObjectName(QStringLiteral("Frame1"));
    auto* picture = new QLabel(greetings);
    picture->setPixmap(QIcon(QStringLiteral(":/icons/vantrel.svg")).pixmap(64, 64));
    picture->setAlignment(Qt::AlignTop);
    auto* welcome =
        new QLabel(QStringLiteral("Welcome to Vantrel. What would you like to do?"), greetings);
    welcome->setWordWrap(true);
    m_newMap->setParent(greetings);
    m_newMap->setObjectName(QStringLiteral("Option1"));
    m_newMap->setChecked(true);
    auto* openMap = new QRadioButton(QStringLiteral("Open an existing image map."), greetings);
    openMap->setObjectName(QStringLiteral("Option2"));

    auto* choices = new QVBoxLayout;
    choices->addWidget(welcome);
    choices->addSpacing(8);
    choices->addWidget(m_newMap);
    choices->addWidget(openMap);
    choices->addStretch(1);
    auto* inner = new QHBoxLayout(greetings);
    inner->addWidget(picture);
    inner->addSpacing(8);
    inner->addLayout(choices, 1);

    auto* ok = new QPushButton(QStringLiteral("OK"), this);
    ok->setObjectName(QStringLiteral("Command1"));
    ok->setDefault(true);
    auto* help = new QPushButton(QStringLiteral("Help"), this);
    help->setObjectName(QStringLiteral("Command2"));
    auto* close = new QPushButton(QStringLiteral("Close"), this);
    close->setObjectName(QStringLiteral("Command3"));
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(ok);
    buttons->addWidget(help);
    buttons->addWidget(close);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(greetings, 1);
    layout->addLayout(buttons);
    resize(420, 200);
    DialogPlacement::CentreOnScreen(*this);

    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(help, &QPushButton::clicked, this, &StartUp::Help);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
}

void StartUp::Help()
{
    HelpFile::ShowManual(m_ui);
}

bool StartUp::NewMapChosen() const
{
    return m_newMap->isChecked();
}
