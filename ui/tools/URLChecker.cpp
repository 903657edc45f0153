#include "ui/tools/URLChecker.h"

#include "core/base/ModalUi.h"
#include "core/base/Module1.h"
#include "core/interchange/URLHelpPage.h"
#include "ui/canvas/ShapeCanvas.h"
#include "ui/dialogs/DialogPlacement.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QUrl>
#include <QVBoxLayout>
#include <QWebEngineView>

URLChecker::URLChecker(ShapeCanvas& map, ModalUi& ui, QWidget* parent)
    : QDialog(parent), m_map(map), m_ui(ui), m_list(map.Document()), m_combo(new QComboBox(this)),
      m_base(new QLineEdit(this)), m_browser(new QWebEngineView(this))
{
    setObjectName(QStringLiteral("URLChecker"));
    setWindowTitle(QStringLiteral("URL Checker"));

    auto* frame = new QGroupBox(QStringLiteral("URL Checker"), this);
    frame->setObjectName(QStringLiteral("Frame1"));
    m_combo->setObjectName(QStringLiteral("URLCombo"));
    m_combo->setMinimumContentsLength(24);
    m_combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_combo->installEventFilter(this);
    m_base->setObjectName(QStringLiteral("txtURL"));
    m_base->setMinimumWidth(180);
    auto* baseLabel = new QLabel(QStringLiteral("Base URL:"), this);
    baseLabel->setBuddy(m_base);
    m_browser->setObjectName(QStringLiteral("WebBrowser1"));

    auto* check = new QPushButton(QStringLiteral("Check"), this);
    check->setObjectName(QStringLiteral("Command1"));
    check->setDefault(true);
    auto* edit = new QPushButton(QStringLiteral("Edit"), this);
    edit->setObjectName(QStringLiteral("Command4"));
    auto* about = new QPushButton(QStringLiteral("About"), this);
    about->setObjectName(QStringLiteral("Command2"));
    auto* close = new QPushButton(QStringLiteral("Close"), this);
    close->setObjectName(QStringLiteral("Command3"));
    connect(check, &QPushButton::clicked, this, &URLChecker::Check);
    connect(edit, &QPushButton::clicked, this, &URLChecker::Edit);
    connect(about, &QPushButton::clicked, this, &URLChecker::About);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);

    auto* row = new QHBoxLayout(frame);
    row->addWidget(m_combo, 2);
    row->addWidget(baseLabel);
    row->addWidget(m_base, 1);
    row->addWidget(check);
    row->addWidget(edit);
    row->addWidget(about);
    row->addWidget(close);

    // The browser takes every pixel below the row of controls.
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(frame);
    layout->addWidget(m_browser, 1);

    m_combo->addItems(m_list.Entries());
    m_combo->setCurrentIndex(0);
    // Selecting the first entry counts as a click on the list; it is swallowed, so
    // opening the checker shows the help page rather than entry 0.
    ListClicked();
    connect(m_combo, &QComboBox::activated, this, &URLChecker::ListClicked);

    resize(820, 600);
    DialogPlacement::CentreOnScreen(*this);
    About();
}

void URLChecker::ListClicked()
{
    if (m_list.TakeClick())
        Check();
}

void URLChecker::Check()
{
    Navigate(URLCheckList::CompleteURL(m_combo->currentText(), m_base->text()));
}

void URLChecker::Edit()
{
    const int index = m_combo->currentIndex();
    if (index < 0)
        return;
    const std::optional<QString> answer = m_ui.Prompt(
        QStringLiteral("Changing URL to..."), QStringLiteral("Change URL"), m_combo->currentText());
    if (!answer || answer->isEmpty())
        return;
    if (m_list.Edit(index, *answer, m_map.Document()))
        m_combo->setItemText(index, *answer);
}

void URLChecker::About()
{
    const QString path = Module1::WritableProgramFolder() + URLHelpPage::FileName();
    if (!URLHelpPage::Write(path))
        return;
    QCoreApplication::processEvents();
    m_lastAddress = path;
    m_browser->load(QUrl::fromLocalFile(path));
}

void URLChecker::Navigate(const QString& Address)
{
    m_lastAddress = Address;
    // Whatever the address, the browser shows the outcome itself, error pages included.
    m_browser->load(QUrl::fromUserInput(Address));
}

void URLChecker::done(int result)
{
    m_list.ResetClicks();
    QDialog::done(result);
}

bool URLChecker::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_combo && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            Check();
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}
