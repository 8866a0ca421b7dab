#include "modules/graphicsitem_param.h"

#include "modules/chooser.h"
#include "modules/supermodule.h"
#include "proj/controls/hoverlight.h"
#include "proj/controls/picturebutton.h"
#include "proj/controls/picturecache.h"

#include <QCursor>
#include <QGraphicsProxyWidget>
#include <QGraphicsScene>
#include <QGraphicsSceneMouseEvent>
#include <QPainter>
#include <QPushButton>

namespace
{
/** Large enough for letters and digits to be legible at a zoom of 0.5. */
const int s_fontPixels = 24;

// Owned by the scene that it was made in.
QPointer<graphicsItem_Param> s_shared;

} // namespace

graphicsItem_Param::graphicsItem_Param(QGraphicsScene* p_scene, QGraphicsItem* p_parent)
    : QGraphicsItem(p_parent)
{
    setZValue(10.0);
    // The canvas has a hand, for what can be dragged.
    setCursor(Qt::ArrowCursor);
    if (p_scene && !p_parent) {
        p_scene->addItem(this);
    }
}

graphicsItem_Param* graphicsItem_Param::shared(QGraphicsScene* p_scene)
{
    if (!s_shared) {
        s_shared = new graphicsItem_Param(p_scene, nullptr);
    }
    return s_shared;
}

graphicsItem_Param* graphicsItem_Param::existing() { return s_shared; }

void graphicsItem_Param::dismiss()
{
    if (s_shared) {
        s_shared->setVisible(false);
    }
}

void graphicsItem_Param::setModule(supermodule* p_module) { m_module = p_module; }

QRectF graphicsItem_Param::boundingRect() const
{
    return QRectF(0, 0, m_background.width(), m_background.height());
}

void graphicsItem_Param::paint(QPainter* p_painter, const QStyleOptionGraphicsItem*, QWidget*)
{
    drawPicture(p_painter, m_background.rect(), m_background);
}

void graphicsItem_Param::mousePressEvent(QGraphicsSceneMouseEvent* p_event) { p_event->accept(); }

void graphicsItem_Param::setMode(int p_mode)
{
    qDeleteAll(childItems());
    m_buttons.clear();
    const Chooser* chooser = m_module ? m_module->popUpChooser(p_mode) : nullptr;
    if (chooser) {
        build(*chooser);
    }
    setVisible(true);
}

void graphicsItem_Param::build(const Chooser& p_chooser)
{
    const PopUpForm& form = *p_chooser.popUp;
    prepareGeometryChange();
    m_backgroundImage = QString::fromLatin1(form.background);
    m_background = picture(m_backgroundImage);
    const QString style = p_chooser.styleSheet();
    for (int i = 0; i < p_chooser.count(); ++i) {
        auto* button = new PictureButton;
        button->setPictures(QString::fromLatin1(p_chooser.style.normalPicture),
                            QString::fromLatin1(p_chooser.style.pressedPicture));
        button->setStyleSheet(style);
        button->setGeometry(0, 0, 60, 60);
        new HoverLight(button);
        if (p_chooser.entries.kind == ChooserEntries::Pictures) {
            button->setIconPicture(p_chooser.entry(i), QSize(form.iconSide, form.iconSide));
        } else {
            QFont font = button->font();
            font.setPixelSize(s_fontPixels);
            button->setFont(font);
            button->setText(p_chooser.entry(i));
        }
        auto* proxy = new QGraphicsProxyWidget(this);
        proxy->setWidget(button);
        const int x = form.advance * (i % form.columns) + 5;
        const int y = form.rowStep * (i / form.columns) + form.columnSlope * i + form.top;
        proxy->setGeometry(QRectF(x, y, 60, 60));
        connect(button, &QPushButton::clicked, this,
                form.firstResult == 0 ? &graphicsItem_Param::OnSelectParam
                                      : &graphicsItem_Param::OnSelectParam1);
        m_buttons.append(button);
    }
}

void graphicsItem_Param::OnSelectParam() { choose(0); }

void graphicsItem_Param::OnSelectParam1() { choose(ConditionOffset); }

void graphicsItem_Param::choose(int p_offset)
{
    auto* button = dynamic_cast<QPushButton*>(sender());
    if (!button || !m_module) {
        return;
    }
    // A block that has no use for the index keeps the base class's empty operation.
    m_module->setParamIndex(m_buttons.indexOf(button) + p_offset);
    setVisible(false);
}
