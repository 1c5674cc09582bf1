#include "anim/animcreatorpage.h"

#include "common/paths.h"
#include "common/text.h"
#include "services/uitext.h"
#include "widgets/dibimage.h"

#include <QPushButton>

namespace wb
{

namespace
{

constexpr int GenWidth = 102; // for both of its captions

} // namespace

AnimCreatorPage::AnimCreatorPage(Settings &settings, Dialogs &dialogs, const frmRes &res, QWidget *parent)
    : ProjectPage(settings, dialogs, res, parent),
      m_list(new FrameListPane({QStringLiteral("lstAnimCR_List"), QStringLiteral("cmdAnimCR_Add"),
                                QStringLiteral("cmdAnimCR_Remove"), QStringLiteral("cmdAnimCR_MoveFrame")},
                               res, this)),
      cmdAnimCR_Gen(NewButton("cmdAnimCR_Gen", tr("Выполнить"),
                              tr("Построить кадры, которые рисуются один поверх другого"))),
      cmdAnimCR_Clean(NewButton("cmdAnimCR_Clean", tr("Очистить"), tr("Убрать все кадры и начать заново"))),
      cmdAnimCR_SavePNG(
          NewButton("cmdAnimCR_SavePNG", tr("Сохранить PNG…"), tr("Записать построенные кадры в файлы PNG"))),
      cmdAnimCR_AddGAI(NewButton("cmdAnimCR_AddGAI", tr("Передать в GAI Editor"),
                                 tr("Добавить построенные кадры к анимации в GAI Editor")))
{
    cmdAnimCR_Gen->setMinimumWidth(GenWidth);
    LayOut(m_list, {cmdAnimCR_Gen, cmdAnimCR_Clean}, {cmdAnimCR_SavePNG, cmdAnimCR_AddGAI},
           QStringLiteral("AnimCR"));
    m_preview->SetSizeBar(QStringLiteral("| "));
    ConnectControls();
    ShowFrames();
}

void AnimCreatorPage::ConnectControls()
{
    connect(m_list, &FrameListPane::AddWanted, this, [this] {
        AddFrom(PngFilter(), [this](const QStringList &paths) {
            if (!AddFiles(paths))
                m_dialogs.Information(tr("Некоторые файлы не были добавлены, т.к. они отлючатся размером от "
                                         "главного кадра."),
                                      UiText(TextInformation));
        });
    });
    ConnectDrops(m_list, [this](const QStringList &paths) { AddDropped(paths); });
    ConnectList(m_list);
    ConnectOrder(m_list);
    connect(cmdAnimCR_Gen, &QPushButton::clicked, this, &AnimCreatorPage::Generate);
    connect(cmdAnimCR_Clean, &QPushButton::clicked, this, [this] { Clean(); });
    connect(cmdAnimCR_SavePNG, &QPushButton::clicked, this, &AnimCreatorPage::Save);
    connect(cmdAnimCR_AddGAI, &QPushButton::clicked, this, &AnimCreatorPage::ToGai);
}

bool AnimCreatorPage::AddFiles(const QStringList &paths)
{
    return RunAdding([&](const FrameStep &step) { return m_project.AddFiles(paths, step); });
}

void AnimCreatorPage::AddDropped(const QStringList &paths)
{
    // Files may arrive when the frames are shown already.
    if (!m_project.IsGenerated() && !AddFiles(paths))
        m_dialogs.Information(tr("Некоторые файлы не были добавлены, т.к. они отлючатся размером от главного "
                                 "кадра \r\nили не принадлежат к формату PNG."),
                              UiText(TextInformation));
}

void AnimCreatorPage::TakeFrames(std::span<const std::int32_t> handles, const QStringList &names)
{
    TakeCopies(handles, tr("Добавление кадров: "),
               [this, names](std::vector<FrameBuf> frames, const FrameStep &step) {
                   m_project.GoBack();
                   m_project.AddFrames(std::move(frames), names, step);
               });
}

void AnimCreatorPage::Generate()
{
    m_preview->StopPlaying();
    if (m_project.IsGenerated()) {
        m_project.GoBack();
        ShowFrame();
        return;
    }
    RunJob(tr("Создание фреймов: "), [this](const FrameStep &step) { m_project.Build(step); });
}

bool AnimCreatorPage::Save()
{
    const Command command(*this);
    if (!m_project.IsGenerated())
        Generate();
    if (!m_project.IsGenerated())
        return false;
    m_preview->StopPlaying();
    return SaveTo(
        PngFilter(), UiText(TextSavingPng),
        [this](const QString &path, const FrameStep &step) { return m_project.WritePngs(path, step); },
        [this](const QString &path) { return MayReplacePngs(path); });
}

// The dialog knows only the name without numbers.
bool AnimCreatorPage::MayReplacePngs(const QString &path)
{
    const QStringList replaced = m_project.ReplacedPngs(path);
    if (replaced.isEmpty())
        return true;
    const QString question = replaced.size() == 1
                                 ? ReplaceQuestion(replaced.front())
                                 : tr("Файл %1 и другие (всего: %2) уже существуют. Заменить?")
                                       .arg(GetFileName(replaced.front()), QString::number(replaced.size()));
    return m_dialogs.Question(question, DefaultTitle);
}

void AnimCreatorPage::ToGai()
{
    QStringList names;
    for (std::int32_t i = 0; i < m_project.List().Count(); ++i)
        names << QStringLiteral("Buf_") + ZeroPad(i, 3);
    Q_EMIT GaiEditorWanted(m_project.Frames(), names,
                           [this, number = m_project.BuildNumber()] { m_project.MarkHandedOn(number); });
}

void AnimCreatorPage::ShowFrames()
{
    m_list->ShowFrames(m_project.List());
    ShowFrame();
}

void AnimCreatorPage::ShowFrame()
{
    const FrameBuf *frame = m_project.ShownFrame();
    m_preview->ShowPicture(frame != nullptr ? ComposedImage(*frame, m_settings.BackColor2) : QImage());

    const FrameList &frames = m_project.List();
    const bool isFree = !m_project.IsBusy();
    const bool isGenerated = m_project.IsGenerated();
    m_list->setEnabled(isFree);
    m_list->SetChangeable(!isGenerated);
    cmdAnimCR_Gen->setText(isGenerated ? tr("Вернуть") : tr("Выполнить"));
    cmdAnimCR_Gen->setEnabled(isFree && frames.Count() > 1);
    cmdAnimCR_Clean->setEnabled(isFree);
    for (QPushButton *button : {cmdAnimCR_SavePNG, cmdAnimCR_AddGAI})
        button->setEnabled(isFree && isGenerated);
    m_preview->ShowPlace(frames.Count(), frames.Current(), !isFree);
    if (isFree)
        ShowUnshown();
}

void AnimCreatorPage::ShowUnshown()
{
    const AnimProject::Unshown &unshown = m_project.NotShown();
    m_preview->ShowNote(
        m_project.IsGenerated() && unshown.Pixels != 0
            ? tr("Нельзя показать пикселов: %1, в кадрах: %2").arg(unshown.Pixels).arg(unshown.Frames)
            : QString());
}

} // namespace wb
