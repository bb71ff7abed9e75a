#include "ui/skins/skin_style.h"

#include <QApplication>
#include <QDialog>
#include <QFontInfo>
#include <QPainter>
#include <QPainterPath>
#include <QProxyStyle>
#include <QStyleFactory>
#include <QStyleOption>

#include "ui/skins/button_face.h"
#include "ui/skins/skin_icons.h"

namespace norvelis::ui {

namespace {

constexpr double kRound = 4;
constexpr int kScrollBar = 12, kFontPixels = 13, kRowAir = 5, kMenuBarAir = 6, kSeparatorInset = 4,
              kDialogMargin = 16;

void PaintBox(QPainter& painter, const QRect& rect, const QColor& face, const QColor& edge) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(edge, 1));
    painter.setBrush(face);
    painter.drawRoundedRect(QRectF(rect).adjusted(0.5, 0.5, -0.5, -0.5), kRound, kRound);
    painter.restore();
}

enum class Points { Right, Down };

void PaintChevron(QPainter& painter, QPointF middle, Points points, const QColor& color) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color, 1.4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.translate(middle);
    if (points == Points::Right) painter.rotate(-90);
    painter.drawPolyline(QPolygonF{QPointF(-3.5, -1.75), QPointF(0, 1.75), QPointF(3.5, -1.75)});
    painter.restore();
}

class SkinStyle : public QProxyStyle {
  public:
    SkinStyle() : QProxyStyle(QStyleFactory::create("Fusion")) {}

    void SetButtons(const PicturePair& buttons) { buttons_ = buttons; }

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override {
        const QPalette& colors = option->palette;
        switch (element) {
            case PE_FrameLineEdit:
            case PE_PanelLineEdit:
                return PaintLineEdit(*option, *painter, widget);
            case PE_Frame:
                return PaintBox(*painter, option->rect, Qt::transparent, Edge(*option));
            case PE_PanelButtonCommand:
                return PaintPushButton(*option, *painter);
            case PE_IndicatorBranch:
                if (option->state & State_Children) {
                    PaintChevron(*painter, QRectF(option->rect).center(),
                                 option->state & State_Open ? Points::Down : Points::Right,
                                 colors.color(option->state & State_Selected ? QPalette::HighlightedText
                                                                             : QPalette::Dark));
                }
                return;
            case PE_FrameGroupBox:  // The title is above its frame.
                return PaintBox(*painter, option->rect.adjusted(0, option->fontMetrics.height() + 3, 0, 0),
                                Qt::transparent, colors.color(QPalette::Mid));
            case PE_FrameTabWidget:
                return PaintBox(*painter, option->rect, Qt::transparent, colors.color(QPalette::Mid));
            case PE_FrameTabBarBase:
            case PE_FrameFocusRect:
                return;
            case PE_PanelScrollAreaCorner:
                return painter->fillRect(option->rect, colors.base());
            case PE_PanelTipLabel:
                painter->fillRect(option->rect, colors.toolTipBase());
                return PaintEdge(*painter, option->rect, colors.color(QPalette::Mid), 1);
            case PE_PanelStatusBar:
                painter->fillRect(option->rect, colors.window());
                painter->setPen(colors.color(QPalette::Midlight));
                painter->drawLine(option->rect.topLeft(), option->rect.topRight());
                return;
            case PE_FrameMenu:
                return PaintEdge(*painter, option->rect, colors.color(QPalette::Mid), 1);
            case PE_FrameStatusBarItem:
                return;
            default:
                QProxyStyle::drawPrimitive(element, option, painter, widget);
        }
    }

    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
        const QPalette& colors = option->palette;
        if (element == CE_MenuBarEmptyArea) {
            painter->fillRect(option->rect, colors.window());
        } else if (const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
                   element == CE_MenuBarItem && item) {
            PaintMenuBarItem(*item, *painter);
        } else if (item && element == CE_MenuItem && item->menuItemType == QStyleOptionMenuItem::Separator) {
            painter->fillRect(QRectF(item->rect.left() + kSeparatorInset, QRectF(item->rect).center().y(),
                                     item->rect.width() - 2 * kSeparatorInset, 1),
                              colors.color(QPalette::Mid));
        } else if (const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
                   element == CE_PushButtonLabel && button && IsDown(*button)) {
            QStyleOptionButton pressed = *button;
            pressed.palette.setColor(QPalette::ButtonText, colors.color(QPalette::HighlightedText));
            QProxyStyle::drawControl(element, &pressed, painter, widget);
        } else if (const auto* tab = qstyleoption_cast<const QStyleOptionTab*>(option);
                   element == CE_TabBarTabShape && tab) {
            PaintTab(*tab, *painter);
        } else if (const auto* header = qstyleoption_cast<const QStyleOptionHeader*>(option);
                   element == CE_HeaderSection && header) {
            painter->fillRect(option->rect, colors.window());
            painter->setPen(colors.color(QPalette::Midlight));
            painter->drawLine(option->rect.bottomLeft(), option->rect.bottomRight());
            painter->drawLine(option->rect.topRight(), option->rect.bottomRight());
        } else {
            QProxyStyle::drawControl(element, option, painter, widget);
        }
    }

    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override {
        if (const auto* combo = qstyleoption_cast<const QStyleOptionComboBox*>(option);
            control == CC_ComboBox && combo) {
            PaintBox(*painter, option->rect, option->palette.color(QPalette::Base), Edge(*option));
            const QRect arrow = subControlRect(control, option, SC_ComboBoxArrow, widget);
            PaintChevron(*painter, QRectF(arrow).center(), Points::Down,
                         option->palette.color(QPalette::Dark));
        } else if (const auto* slider = qstyleoption_cast<const QStyleOptionSlider*>(option);
                   control == CC_ScrollBar && slider) {
            PaintScrollBar(*slider, *painter);
        } else {
            QProxyStyle::drawComplexControl(control, option, painter, widget);
        }
    }

    QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                         const QWidget* widget) const override {
        if (control != CC_ScrollBar) return QProxyStyle::subControlRect(control, option, part, widget);
        const auto* slider = qstyleoption_cast<const QStyleOptionSlider*>(option);
        return slider ? ScrollBarPart(*slider, part) : QRect();
    }

    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                           const QWidget* widget) const override {
        QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
        if (type == CT_ItemViewItem || type == CT_MenuItem) size.rheight() += kRowAir;
        if (type == CT_MenuBarItem) size.rheight() += kMenuBarAir;
        if (type == CT_PushButton) size.setHeight(ButtonHeight(buttons_.first, option->fontMetrics.height()));
        return size;
    }

    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override {
        switch (metric) {
            case PM_ScrollBarExtent:
                return kScrollBar;
            case PM_ScrollBarSliderMin:
                return 28;
            case PM_MenuPanelWidth:
                return 1;
            case PM_MenuHMargin:
            case PM_MenuVMargin:
                return 4;
            case PM_HeaderMargin:
                return 6;
            case PM_MenuBarVMargin:
                return 2;
            case PM_MenuBarHMargin:
                return 6;
            case PM_DefaultFrameWidth:
                return 2;
            case PM_LayoutLeftMargin:
            case PM_LayoutTopMargin:
            case PM_LayoutRightMargin:
            case PM_LayoutBottomMargin:
                return qobject_cast<const QDialog*>(widget)
                           ? kDialogMargin
                           : QProxyStyle::pixelMetric(metric, option, widget);
            default:
                return QProxyStyle::pixelMetric(metric, option, widget);
        }
    }

    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* data) const override {
        switch (hint) {
            case SH_EtchDisabledText:
            case SH_ComboBox_Popup:
            case SH_ComboBox_AllowWheelScrolling:  // A wheel that passes over a closed list is no choice.
            case SH_DialogButtonBox_ButtonsHaveIcons:
            case SH_ItemView_ActivateItemOnSingleClick:
            case SH_ItemView_ShowDecorationSelected:
                return hint == SH_ItemView_ShowDecorationSelected;
            case SH_UnderlineShortcut:
                return 1;
            default:
                return QProxyStyle::styleHint(hint, option, widget, data);
        }
    }

    QIcon standardIcon(StandardPixmap icon, const QStyleOption* option,
                       const QWidget* widget) const override {
        const QIcon own = SkinIcon(icon, QApplication::palette());
        return own.isNull() ? QProxyStyle::standardIcon(icon, option, widget) : own;
    }

  private:
    static QColor Edge(const QStyleOption& option) {
        return option.palette.color(option.state & State_HasFocus ? QPalette::Highlight : QPalette::Mid);
    }

    static void PaintLineEdit(const QStyleOption& option, QPainter& painter, const QWidget* widget) {
        // A combo box or spin box draws the frame around its own line edit.
        const bool inside = widget && widget->parentWidget() &&
                            (widget->parentWidget()->inherits("QComboBox") ||
                             widget->parentWidget()->inherits("QAbstractSpinBox"));
        if (!inside) PaintBox(painter, option.rect, option.palette.color(QPalette::Base), Edge(option));
    }

    static bool IsDown(const QStyleOption& option) { return option.state & (State_Sunken | State_On); }

    void PaintPushButton(const QStyleOption& option, QPainter& painter) const {
        const auto* button = qstyleoption_cast<const QStyleOptionButton*>(&option);
        const bool isDefault = button && button->features & QStyleOptionButton::DefaultButton;
        painter.save();
        PaintButtonFace(painter, option.rect, buttons_, option.palette.color(QPalette::Highlight),
                        {IsDown(option), bool(option.state & State_Enabled && option.state & State_MouseOver),
                         isDefault || option.state & State_HasFocus});
        painter.restore();
    }

    void PaintMenuBarItem(const QStyleOptionMenuItem& item, QPainter& painter) const {
        painter.fillRect(item.rect, item.palette.window());
        const bool active = item.state & (State_Selected | State_Sunken) && item.state & State_Enabled;
        if (active) {
            const QRect face = item.rect.adjusted(1, 2, -1, -2);
            const QColor color = item.palette.color(QPalette::Highlight);
            PaintBox(painter, face, color, color);
        }
        drawItemText(&painter, item.rect, Qt::AlignCenter | Qt::TextShowMnemonic, item.palette,
                     item.state & State_Enabled, item.text,
                     active ? QPalette::HighlightedText : QPalette::WindowText);
    }

    /// A line below the chosen tab and the one under the mouse.
    static void PaintTab(const QStyleOptionTab& tab, QPainter& painter) {
        constexpr int kLine = 3;
        const bool chosen = tab.state & State_Selected;
        if (!chosen && !(tab.state & State_MouseOver)) return;
        const QRect line = tab.rect.adjusted(6, tab.rect.height() - kLine, -6, 0);
        painter.fillRect(line, tab.palette.color(chosen ? QPalette::Highlight : QPalette::Mid));
    }

    static QRect ScrollBarPart(const QStyleOptionSlider& bar, SubControl part) {
        const bool vertical = bar.orientation == Qt::Vertical;
        const int length = vertical ? bar.rect.height() : bar.rect.width();
        const int range = bar.maximum - bar.minimum;
        int size = length;
        if (range > 0) {
            size = static_cast<int>(static_cast<qint64>(bar.pageStep) * length /
                                    (static_cast<qint64>(range) + bar.pageStep));
            size = std::clamp(size, std::min(28, length), length);
        }
        const int start = sliderPositionFromValue(bar.minimum, bar.maximum, bar.sliderPosition, length - size,
                                                  bar.upsideDown);
        const auto piece = [&](int from, int to) {
            return vertical ? QRect(0, from, bar.rect.width(), to - from)
                            : QRect(from, 0, to - from, bar.rect.height());
        };
        switch (part) {
            case SC_ScrollBarGroove:
                return bar.rect;
            case SC_ScrollBarSlider:
                return piece(start, start + size);
            case SC_ScrollBarSubPage:
                return piece(0, start);
            case SC_ScrollBarAddPage:
                return piece(start + size, length);
            default:
                return {};
        }
    }

    static void PaintScrollBar(const QStyleOptionSlider& bar, QPainter& painter) {
        painter.fillRect(bar.rect, bar.palette.color(QPalette::Base));
        if (bar.maximum <= bar.minimum) return;
        const QRectF slider = QRectF(ScrollBarPart(bar, SC_ScrollBarSlider)).adjusted(3, 3, -3, -3);
        const bool lively = bar.state & (State_MouseOver | State_Sunken);
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(bar.palette.color(lively ? QPalette::Dark : QPalette::Mid));
        painter.drawRoundedRect(slider, 3, 3);
        painter.restore();
    }

    PicturePair buttons_;
};

}  // namespace

void UseSkinStyle(QApplication& application) {
    QFont font = application.font();
    font.setFamilies({"Noto Sans", "Liberation Sans", font.family()});
    if (QFontInfo(font).pixelSize() < kFontPixels) font.setPixelSize(kFontPixels);
    QApplication::setFont(font);
    QApplication::setStyle(new SkinStyle);
    SetStyleSkin(PlainSkin());
}

double TextScale() {
    return std::max(1.0, QFontInfo(QApplication::font()).pixelSize() / static_cast<double>(kFontPixels));
}

void SetStyleSkin(const Skin& skin) {
    if (auto* style = dynamic_cast<SkinStyle*>(QApplication::style()))
        style->SetButtons(skin.ForTag("Button"));
    QApplication::setPalette(skin.Palette());
}

}  // namespace norvelis::ui
