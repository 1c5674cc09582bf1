#include "dat/dateditorpage.h"

#include "dat/valuebox.h"
#include "platform/nativepath.h"
#include "widgets/elidedlabel.h"
#include "widgets/optionframe.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLocale>
#include <QPushButton>
#include <QVBoxLayout>

#include <initializer_list>

namespace wb
{

DatEditorPage::DatEditorPage(DatEditor &editor, QWidget *parent)
    : Page(parent), m_editor(editor),
      cmdDAT_Open(NewButton("cmdDAT_Open", tr("Открыть DAT…"), tr("Открыть файл данных"))),
      cmdDAT_Close(NewButton("cmdDAT_Close", tr("Закрыть"), tr("Закрыть файл данных"))),
      chkDAT_ZL(new QCheckBox(tr("Сжимать (ZL)"), this)),
      cmdDAT_SaveAs(NewButton("cmdDAT_SaveAs", tr("Сохранить как…"), tr("Записать под другим именем"))),
      cmdDAT_Save(NewButton("cmdDAT_Save", tr("Сохранить"), tr("Записать файл, который открыт"))),
      lblDAT_Path(new ElidedLabel(QStringLiteral("lblDAT_Path"), this)),
      txtText(new ValueBox(QStringLiteral("txtText"), this)), lblDAT_Part(new QLabel(this)),
      lblDAT_Work(new QLabel(this))
{
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 12, 12, 10);
    column->setSpacing(8);
    column->addWidget(MakeButtons());
    column->addWidget(MakeValue(), 1);
    column->addWidget(lblDAT_Work);
    lblDAT_Work->setObjectName(QStringLiteral("lblDAT_Work"));
    lblDAT_Work->setProperty("quiet", true);
    ConnectControls();
    ShowState();
    ShowValue();
}

QPushButton *DatEditorPage::NewButton(const char *name, const QString &caption, const QString &tip)
{
    auto *button = new QPushButton(caption, this);
    button->setObjectName(QLatin1String(name));
    button->setToolTip(tip);
    return button;
}

QWidget *DatEditorPage::MakeButtons()
{
    auto *bar = new QWidget(this);
    auto *row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(8);
    row->addWidget(cmdDAT_Open);
    row->addWidget(cmdDAT_Close);
    row->addStretch(1);
    row->addWidget(chkDAT_ZL);
    row->addWidget(cmdDAT_SaveAs);
    row->addWidget(cmdDAT_Save);
    chkDAT_ZL->setObjectName(QStringLiteral("chkDAT_ZL"));
    chkDAT_ZL->setToolTip(tr("Записать файл в сжатом виде"));
    cmdDAT_Save->setProperty("primary", true);
    return bar;
}

QWidget *DatEditorPage::MakeValue()
{
    auto *frame = new CompactFrame(tr("Значение"), this);
    auto *column = new QVBoxLayout(frame);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    column->addWidget(txtText, 1);
    column->addWidget(lblDAT_Part);
    column->addWidget(lblDAT_Path);
    txtText->setAccessibleName(tr("Значение"));
    lblDAT_Part->setObjectName(QStringLiteral("lblDAT_Part"));
    lblDAT_Path->setProperty("quiet", true);
    return frame;
}

void DatEditorPage::ConnectControls()
{
    connect(cmdDAT_Open, &QPushButton::clicked, &m_editor, &DatEditor::Open);
    connect(cmdDAT_Close, &QPushButton::clicked, &m_editor, &DatEditor::Close);
    connect(cmdDAT_Save, &QPushButton::clicked, &m_editor, &DatEditor::Save);
    connect(cmdDAT_SaveAs, &QPushButton::clicked, &m_editor, &DatEditor::SaveAs);
    connect(chkDAT_ZL, &QCheckBox::clicked, &m_editor, &DatEditor::SetZL);
    connect(txtText, &ValueBox::Edited, &m_editor, &DatEditor::SetValue);
    connect(&m_editor, &DatEditor::StateChanged, this, &DatEditorPage::ShowState);
    connect(&m_editor, &DatEditor::ValueSelected, this, &DatEditorPage::ShowValue);
    connect(&m_editor, &DatEditor::WorkChanged, lblDAT_Work, &QLabel::setText);
    connect(&m_editor, &DatEditor::Idle, this, &Page::Idle);
}

void DatEditorPage::ShowState()
{
    const DatEditorState &state = m_editor.State();
    const bool isFree = !m_editor.IsBusy();
    if (m_focused == nullptr)
        m_focused = window()->focusWidget();
    cmdDAT_Open->setEnabled(isFree);
    for (QWidget *control :
         std::initializer_list<QWidget *>{cmdDAT_Save, cmdDAT_SaveAs, cmdDAT_Close, chkDAT_ZL})
        control->setEnabled(isFree && state.DocOpen());
    chkDAT_ZL->setChecked(state.Tree().IsZL);
    txtText->setEnabled(isFree && state.ValueSelected());
    if (isFree)
        GiveFocusBack();
    lblDAT_Path->setText(DisplayName(state.DatPath()) +
                         (state.Modified() ? QStringLiteral(" *") : QString()));
}

// The control that had the focus, and was disabled meanwhile, gets it back; "Open" for one that stays so.
void DatEditorPage::GiveFocusBack()
{
    QWidget *focused = m_focused;
    if (focused != nullptr && isAncestorOf(focused))
        (focused->isEnabled() ? focused : cmdDAT_Open)->setFocus();
    m_focused = nullptr;
}

void DatEditorPage::ShowValue()
{
    const DatEditorState &state = m_editor.State();
    const QString value = state.Value();
    txtText->SetValue(value);
    const QLocale russian(QLocale::Russian);
    lblDAT_Part->setText(tr("Показано %1 из %2 знаков, только чтение")
                             .arg(russian.toString(ValueBox::LongestEdited), russian.toString(value.size())));
    lblDAT_Part->setVisible(value.size() > ValueBox::LongestEdited);
    txtText->setPlaceholderText(state.DocOpen() ? tr("Выберите значение в списке слева.")
                                                : tr("Откройте файл DAT."));
    txtText->setEnabled(!m_editor.IsBusy() && state.ValueSelected());
}

} // namespace wb
