#include "app/skin.h"

#include <QApplication>
#include <QFile>
#include <QFont>
#include <QPalette>
#include <QProxyStyle>
#include <QStyleFactory>

namespace wb
{

namespace
{

class WorkbenchStyle : public QProxyStyle
{
public:
    using QProxyStyle::QProxyStyle;

    // The style sheet marks the focus; Fusion's rectangle inside it would mark it twice.
    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget) const override
    {
        if (element != PE_FrameFocusRect)
            QProxyStyle::drawPrimitive(element, option, painter, widget);
    }

    // A click on a slider's groove goes right there, as on a player's time line.
    int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                  QStyleHintReturn *returnData) const override
    {
        if (hint == SH_Slider_AbsoluteSetButtons)
            return Qt::LeftButton;
        if (hint == SH_DialogButtonBox_ButtonsHaveIcons)
            return false;
        return QProxyStyle::styleHint(hint, option, widget, returnData);
    }
};

QPalette LightPalette()
{
    QPalette palette(QColor(0xF1, 0xF3, 0xF6));
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::AlternateBase, QColor(0xF7, 0xF9, 0xFB));
    palette.setColor(QPalette::Mid, QColor(0xD3, 0xDA, 0xE3));
    palette.setColor(QPalette::WindowText, QColor(0x26, 0x30, 0x3C));
    palette.setColor(QPalette::Text, QColor(0x26, 0x30, 0x3C));
    palette.setColor(QPalette::ButtonText, QColor(0x26, 0x30, 0x3C));
    palette.setColor(QPalette::Highlight, QColor(0x2F, 0x74, 0xB8));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::PlaceholderText, QColor(0x8A, 0x95, 0xA3));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, QColor(0xA3, 0xAD, 0xB9));
    return palette;
}

QFont InterfaceFont()
{
    QFont font;
    font.setFamilies({QStringLiteral("Inter"), QStringLiteral("Noto Sans"), QStringLiteral("DejaVu Sans")});
    font.setPixelSize(13);
    return font;
}

} // namespace

void ApplySkin(QApplication &application)
{
    QApplication::setStyle(new WorkbenchStyle(QStyleFactory::create(QStringLiteral("Fusion"))));
    QApplication::setPalette(LightPalette());
    QApplication::setFont(InterfaceFont());
    QFile sheet(QStringLiteral(":/skin/skin.qss"));
    if (sheet.open(QIODevice::ReadOnly))
        application.setStyleSheet(QString::fromUtf8(sheet.readAll()));
}

} // namespace wb
