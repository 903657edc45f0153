#include "ui/dialogs/frmOptions.h"

#include "core/base/ModalUi.h"
#include "ui/canvas/ShapeCanvas.h"
#include "ui/dialogs/DialogPlacement.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QShortcut>
#include <QTabBar>
#include <QVBoxLayout>

frmOptions::frmOptions(ShapeCanvas& map, ModalUi& ui, QWidget* parent)
    : QDialog(parent), m_map(map), m_ui(ui), m_model(map.Document(),
                                                     [&map](std::int16_t index) {
                                                         map.ReStackArrayFromOptions(index);
                                                         map.DrawShapes();
                                                     }),
      m_tabs(new QTabBar(this))
{
    setObjectName(QStringLiteral("frmOptions"));
    setWindowTitle(QStringLiteral("Properties"));
    m_tabs->setObjectName(QStringLiteral("tbsOptions"));
    m_tabs->setExpanding(false);
    m_tabs->setUsesScrollButtons(true);

    m_mapGroup = BuildMapGroup();
    m_shapeGroup = BuildShapeGroup();

    auto* page = new QFrame(this);
    page->setObjectName(QStringLiteral("picOptions"));
    page->setFrameShape(QFrame::StyledPanel);
    auto* pageLayout = new QVBoxLayout(page);
    pageLayout->addWidget(m_mapGroup);
    pageLayout->addWidget(m_shapeGroup);
    pageLayout->addStretch(1);

    auto* ok = new QPushButton(QStringLiteral("OK"), this);
    ok->setObjectName(QStringLiteral("cmdOK"));
    ok->setDefault(true);
    auto* cancel = new QPushButton(QStringLiteral("Cancel"), this);
    cancel->setObjectName(QStringLiteral("cmdCancel"));
    auto* help = new QPushButton(QStringLiteral("Help!"), this);
    help->setObjectName(QStringLiteral("Command1"));
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(help);
    buttons->addStretch(1);
    buttons->addWidget(ok);
    buttons->addWidget(cancel);

    auto* layout = new QVBoxLayout(this);
    layout->setSpacing(0);
    layout->addWidget(m_tabs);
    layout->addWidget(page, 1);
    layout->addSpacing(10);
    layout->addLayout(buttons);
    resize(520, 290);
    DialogPlacement::CentreOnScreen(*this);

    // The keys tabbed pages have everywhere, from whichever box has the focus.
    const auto stepKeys = [this](std::initializer_list<QKeySequence> Keys, int Step) {
        for (const QKeySequence& keys : Keys)
            connect(new QShortcut(keys, this), &QShortcut::activated, this, [this, Step] {
                m_tabs->setCurrentIndex(
                    qBound(0, m_tabs->currentIndex() + Step, m_tabs->count() - 1));
            });
    };
    stepKeys({QKeySequence(Qt::CTRL | Qt::Key_PageDown), QKeySequence(Qt::CTRL | Qt::Key_Tab)}, 1);
    stepKeys({QKeySequence(Qt::CTRL | Qt::Key_PageUp),
              QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Backtab)},
             -1);

    connect(ok, &QPushButton::clicked, this, &frmOptions::Ok);
    connect(cancel, &QPushButton::clicked, this, &frmOptions::Cancel);
    connect(help, &QPushButton::clicked, this,
            [this] { m_ui.Message(OptionsModel::HelpText, ModalUi::Icon::Information); });

    // Dialog load: the lists, the map fields, the map page on show.
    m_model.LoadMapFields();
    ShowMapFields();
    m_shapeGroup->hide();
    m_model.SetPageFiller([this](int tab) { ShowPage(tab); });
    connect(m_tabs, &QTabBar::currentChanged, this, &frmOptions::OnTabChanged);
}

QWidget* frmOptions::BuildMapGroup()
{
    auto* group = new QWidget(this);
    group->setObjectName(QStringLiteral("MapProperties"));
    auto* form = new QFormLayout(group);

    m_mapName = new QLineEdit(group);
    m_mapName->setObjectName(QStringLiteral("txtMapName"));
    connect(m_mapName, &QLineEdit::textChanged, this,
            [this](const QString& text) { m_model.MapName = text; });

    m_style = new QComboBox(group);
    m_style->setObjectName(QStringLiteral("Combo1"));
    m_style->addItems(OptionsModel::MapStyleNames());
    connect(m_style, &QComboBox::activated, this, [this](int index) {
        if (m_style->count() > 0)
            m_model.MapStyle = static_cast<std::int16_t>(index);
    });

    m_onClick = new QComboBox(group);
    m_onClick->setObjectName(QStringLiteral("Combo2"));
    m_onClick->addItems(OptionsModel::OnClickNames());
    connect(m_onClick, &QComboBox::activated, this, [this](int index) {
        if (m_onClick->count() > 0)
            m_model.MapOnClick = static_cast<std::int16_t>(index);
    });

    m_border = new QButtonGroup(group);
    m_border->setObjectName(QStringLiteral("BorderOpt"));
    auto* borders = new QHBoxLayout;
    for (int i = 0; i < OptionsModel::BorderNames().size(); ++i) {
        auto* option = new QRadioButton(OptionsModel::BorderNames().at(i), group);
        option->setObjectName(QStringLiteral("BorderOpt_%1").arg(i));
        m_border->addButton(option, i);
        borders->addWidget(option);
    }
    borders->addStretch(1);
    connect(m_border, &QButtonGroup::idClicked, this,
            [this](int id) { m_model.MapBorder = static_cast<std::int16_t>(id); });

    form->addRow(QStringLiteral("Map Name:"), m_mapName);
    form->addRow(QStringLiteral("Map Style:"), m_style);
    form->addRow(QStringLiteral("On Click:"), m_onClick);
    form->addRow(QStringLiteral("Border:"), borders);
    return group;
}

QLineEdit* frmOptions::TextBox(const char* Name, OptionsModel::Field TheField)
{
    auto* box = new QLineEdit(m_shapeGroup);
    box->setObjectName(QString::fromLatin1(Name));
    // Every change counts, as in the record array; the model ignores the changes made
    // while a page is being filled.
    connect(box, &QLineEdit::textChanged, this,
            [this, TheField](const QString& text) { m_model.EditText(TheField, text); });
    return box;
}

QWidget* frmOptions::BuildShapeGroup()
{
    m_shapeGroup = new QWidget(this);
    m_shapeGroup->setObjectName(QStringLiteral("ShapeProperties"));
    auto* form = new QFormLayout(m_shapeGroup);
    m_url = TextBox("txtURL", OptionsModel::Field::URL);
    m_comment = TextBox("txtComment", OptionsModel::Field::Comment);
    m_target = TextBox("txtTarget", OptionsModel::Field::Target);
    m_status = TextBox("txtStatus", OptionsModel::Field::Status);
    m_alert = TextBox("txtAlert", OptionsModel::Field::Alert);
    m_alertOn = new QCheckBox(QStringLiteral("ON"), m_shapeGroup);
    m_alertOn->setObjectName(QStringLiteral("Check1"));
    connect(m_alertOn, &QCheckBox::clicked, this,
            [this](bool checked) { m_model.ClickAlert(checked); });

    auto* alertRow = new QHBoxLayout;
    alertRow->addWidget(m_alert, 1);
    alertRow->addWidget(m_alertOn);
    form->addRow(QStringLiteral("URL:"), m_url);
    form->addRow(QStringLiteral("Comment:"), m_comment);
    form->addRow(QStringLiteral("Target:"), m_target);
    form->addRow(QStringLiteral("Status Bar:"), m_status);
    form->addRow(QStringLiteral("Alert Box:"), alertRow);
    return m_shapeGroup;
}

void frmOptions::OpenOnTab(int TheIndex)
{
    const int start = TheIndex < 1 || TheIndex > m_model.TabCount() ? 1 : TheIndex;
    m_window = TabWindow(m_model.TabCount());
    m_window.Centre(start);
    FillTabs(start);
    m_model.LoadUpArray();
    m_model.SelectTab(start);
}

void frmOptions::FillTabs(int Current)
{
    const QSignalBlocker blocker(m_tabs);
    while (m_tabs->count() > 0)
        m_tabs->removeTab(0);
    for (const int tab : m_window.Tabs())
        m_tabs->addTab(m_model.TabCaption(tab));
    m_tabs->setCurrentIndex(std::max(0, m_window.StripIndexOf(Current)));
}

void frmOptions::OnTabChanged(int StripIndex)
{
    const int tab = m_window.TabAt(StripIndex);
    if (tab == 0)
        return;
    m_model.SelectTab(tab);
    // The strip is refilled once its own signal is over, never from inside it.
    QMetaObject::invokeMethod(
        this,
        [this, tab] {
            if (m_model.ShownTab() == tab && m_window.Follow(tab))
                FillTabs(tab);
        },
        Qt::QueuedConnection);
}

void frmOptions::ShowPage(int Tab)
{
    if (Tab == 1) {
        m_shapeGroup->hide();
        m_mapGroup->show();
        ShowMapFields();
        m_mapName->setFocus();
        return;
    }
    m_mapGroup->hide();
    m_shapeGroup->show();
    const OptionsModel::Record& record = m_model.RecordOfTab(Tab);
    m_url->setText(record.URL);
    m_comment->setText(record.Comment);
    m_target->setText(record.Target);
    m_status->setText(record.Status);
    m_alert->setText(record.Alert);
    m_alertOn->setChecked(record.AlertVal != 0);
    m_url->setFocus();
}

void frmOptions::ShowMapFields()
{
    m_mapName->setText(m_model.MapName);
    m_style->setCurrentIndex(m_model.MapStyle);
    m_onClick->setCurrentIndex(m_model.MapOnClick);
    if (QAbstractButton* option = m_border->button(m_model.MapBorder))
        option->setChecked(true);
}

void frmOptions::Ok()
{
    m_model.WriteBack();
    m_closedByButton = true;
    accept();
}

void frmOptions::Cancel()
{
    m_closedByButton = true;
    reject();
}

void frmOptions::reject()
{
    // The close box (or Escape) asks first; Cancel has already decided.
    if (!m_closedByButton && !m_ui.CriticalQuestion(OptionsModel::CloseQuestion))
        return;
    QDialog::reject();
}
