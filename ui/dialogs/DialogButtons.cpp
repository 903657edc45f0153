#include "ui/dialogs/DialogButtons.h"

#include <QDialog>
#include <QHBoxLayout>
#include <QPushButton>

QHBoxLayout* DialogButtons::OkCancel(QDialog& Dialog, QPushButton*& Ok)
{
    Ok = new QPushButton(QStringLiteral("OK"), &Dialog);
    Ok->setObjectName(QStringLiteral("Command1"));
    Ok->setDefault(true);
    auto* cancel = new QPushButton(QStringLiteral("Cancel"), &Dialog);
    cancel->setObjectName(QStringLiteral("Command2"));
    QObject::connect(cancel, &QPushButton::clicked, &Dialog, &QDialog::reject);
    auto* row = new QHBoxLayout;
    row->addStretch(1);
    row->addWidget(Ok);
    row->addWidget(cancel);
    return row;
}
