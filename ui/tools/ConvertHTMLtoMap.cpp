#include "ui/tools/ConvertHTMLtoMap.h"

#include "core/base/ModalUi.h"
#include "ui/dialogs/DialogPlacement.h"
#include "ui/tools/ImportWithOptions.h"

#include <QCheckBox>
#include <QFontDatabase>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

ConvertHTMLtoMap::ConvertHTMLtoMap(ShapeCanvas& map, ModalUi& ui, QWidget* parent)
    : QDialog(parent), m_map(map), m_ui(ui), m_text(new QPlainTextEdit(this)),
      m_keepText(new QCheckBox(QStringLiteral("&Keep text as written"), this)),
      m_add(new QCheckBox(QStringLiteral("&Add to the current shapes"), this))
{
    setObjectName(QStringLiteral("ConvertHTMLtoMap"));
    setWindowTitle(QStringLiteral("Convert HTML to Map"));

    auto* frame = new QGroupBox(QStringLiteral("Code"), this);
    frame->setObjectName(QStringLiteral("Frame1"));
    m_text->setObjectName(QStringLiteral("Text1"));
    m_text->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_text->setPlainText(QStringLiteral("Paste HTML Code Here\n"));
    // The hint is selected, so that the first paste or keystroke replaces it.
    m_text->selectAll();
    m_text->setFocus();
    // Pasted code needs no typed tabs: Tab leaves the box for the options and buttons, and
    // Ctrl+Enter generates from it.
    m_text->setTabChangesFocus(true);
    auto* frameLayout = new QVBoxLayout(frame);
    frameLayout->addWidget(m_text);

    auto* generate = new QPushButton(QStringLiteral("Generate"), this);
    generate->setObjectName(QStringLiteral("Command1"));
    auto* warning = new QPushButton(QStringLiteral("Warning!"), this);
    warning->setObjectName(QStringLiteral("Command2"));
    auto* cancel = new QPushButton(QStringLiteral("Cancel"), this);
    cancel->setObjectName(QStringLiteral("Command3"));
    // Enter belongs to the text box: pasted code has many lines.
    for (QPushButton* button : {generate, warning, cancel})
        button->setAutoDefault(false);
    connect(generate, &QPushButton::clicked, this, &ConvertHTMLtoMap::Generate);
    for (const QKeySequence& keys :
         {QKeySequence(Qt::CTRL | Qt::Key_Return), QKeySequence(Qt::CTRL | Qt::Key_Enter)})
        connect(new QShortcut(keys, this), &QShortcut::activated, this,
                &ConvertHTMLtoMap::Generate);
    connect(warning, &QPushButton::clicked, this, &ConvertHTMLtoMap::Warning);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);

    // Both off: the classic conversion, exactly.
    m_keepText->setObjectName(QStringLiteral("chkKeepText"));
    m_keepText->setToolTip(QStringLiteral("Read the code as a browser does: letter case, "
                                          "entities, titles, status and alert texts are kept"));
    m_add->setObjectName(QStringLiteral("chkAddShapes"));
    m_add->setToolTip(QStringLiteral("Keep the map's shapes and add the converted ones"));
    auto* options = new QHBoxLayout;
    options->addWidget(m_keepText);
    options->addWidget(m_add);
    options->addStretch(1);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(generate);
    buttons->addWidget(warning);
    buttons->addStretch(1);
    buttons->addWidget(cancel);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(frame, 1);
    layout->addLayout(options);
    layout->addLayout(buttons);

    resize(600, 420);
    DialogPlacement::CentreOnScreen(*this);
}

void ConvertHTMLtoMap::Generate()
{
    if (ImportWithOptions::Generate(m_text->toPlainText(), m_map, m_ui, m_keepText->isChecked(),
                                    m_add->isChecked()))
        accept();
}

void ConvertHTMLtoMap::Warning()
{
    m_ui.Message(WarningText(), ModalUi::Icon::Critical);
}

QString ConvertHTMLtoMap::WarningText()
{
    return QStringLiteral(
        "This will clear all current shapes you have created. Plus it only converts the shapes "
        "(and a few of their properties) in the code, it will not load up the map.");
}
