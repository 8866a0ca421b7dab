#include "modules/supermodule.h"

#include "modules/documentstate.h"
#include "modules/graphicsitem_param.h"
#include "modules/modulebutton.h"
#include "modules/modulehost.h"
#include "modules/moduleregistry.h"
#include "proj/controls/picturecache.h"

#include <QDebug>
#include <QGraphicsScene>
#include <QPainter>
#include <QPushButton>
#include <QStaticText>

namespace
{
/**
 * Limit of a stored coordinate: the layout adds up a long chain in integers, which must not
 * overflow.
 */
const int s_farthest = 1000000000;
} // namespace

/** The selection frame: its pixmap, or, where the view scales up, drawn for that scale. */
class supermodule::SelectFrame final : public QGraphicsPixmapItem
{
public:
    explicit SelectFrame(supermodule& p_module) : QGraphicsPixmapItem(&p_module), m_module(p_module)
    {
        follow();
    }

    /** Takes the block's picture and shape as they are now. */
    void follow()
    {
        prepareGeometryChange();
        setPixmap(picture(m_module.m_selectPath));
        m_area = pixmap().isNull() ? QRectF() : m_module.selectionArea(pixmap());
    }

    QRectF boundingRect() const override { return m_area; }

    QPainterPath shape() const override
    {
        QPainterPath path;
        path.addRect(m_area);
        return path;
    }

    void paint(QPainter* p_painter, const QStyleOptionGraphicsItem*, QWidget*) override
    {
        m_module.paintSelection(p_painter, m_module.m_selectPath);
    }

private:
    supermodule& m_module;
    QRectF m_area;
};

supermodule::supermodule(int p_id, const QString& p_imagePath, const QString& p_pressedPath,
                         const QString& p_text)
    : id(p_id), m_imagePath(p_imagePath), m_pressedPath(p_pressedPath), m_text(p_text)
{
    initialise();
}

supermodule::supermodule(const supermodule& p_other)
    : QObject(),
      QGraphicsItem(),
      id(p_other.id),
      ownid(p_other.ownid),
      m_imagePath(p_other.m_imagePath),
      m_pressedPath(p_other.m_pressedPath),
      m_text(p_other.m_text)
{
    initialise();
    m_selectPath = p_other.m_selectPath;
}

supermodule::~supermodule()
{
    s_bodies -= (m_left ? 1 : 0) + (m_right ? 1 : 0);
    ModuleRegistry::forget(this);
}

void supermodule::initialise()
{
    static const QString s_name = QStringLiteral("module");
    setData(ItemNameKey, s_name);
    setToolTip(m_text);
    ModuleRegistry::remember(this);
}

supermodule* supermodule::fromItem(QGraphicsItem* p_item)
{
    return p_item && p_item->type() == Type ? static_cast<supermodule*>(p_item) : nullptr;
}

supermodule* supermodule::seenAs(QGraphicsItem* p_item)
{
    return fromItem(p_item && p_item->type() == ModulePartItemType ? p_item->parentItem() : p_item);
}

void supermodule::setText(const QString& p_text)
{
    m_text = p_text;
    update();
}

void supermodule::setSelectPicture(const QString& p_path)
{
    m_selectPath = p_path;
    updateSelectItem();
}

void supermodule::updateSelectItem()
{
    if (m_selectItem) {
        m_selectItem->follow();
    }
}

QRectF supermodule::selectionArea(const QPixmap& p_frame) const
{
    return QRectF(QPointF(), p_frame.size());
}

void supermodule::paintSelection(QPainter* p_painter, const QString& p_frame)
{
    drawPicture(p_painter, 0, 0, jointPicture(p_frame, m_filledCorners));
}

QGraphicsPixmapItem& supermodule::selectItem()
{
    if (!m_selectItem) {
        const QList<QGraphicsItem*> above = childItems();
        m_selectItem = std::make_unique<SelectFrame>(*this);
        m_selectItem->hide();
        // The buttons are older, but lie on the frame.
        for (const QGraphicsItem* each : above) {
            m_selectItem->stackBefore(each);
        }
    }
    return *m_selectItem;
}

QGraphicsPathItem& supermodule::pathItem()
{
    if (!m_pathItem) {
        m_pathItem = std::make_unique<QGraphicsPathItem>(this);
        m_pathItem->setZValue(-10);
    }
    return *m_pathItem;
}

void supermodule::enterScene(QGraphicsScene* p_scene)
{
    if (!hasConnector(NextLink) && !hasConnector(LeftLink) && !hasConnector(RightLink)) {
        createCollisions();
    }
    setFlags(ItemIsMovable | ItemIsSelectable);
    if (p_scene) {
        p_scene->addItem(this);
    }
}

QRectF supermodule::boundingRect() const { return QRectF(0, 0, 120, 140); }

void supermodule::paint(QPainter* p_painter, const QStyleOptionGraphicsItem*, QWidget*)
{
    const QPixmap shown = picture(m_pressedPath);
    drawPicture(p_painter, 0, 0, shown);
    QFont font;
    font.setPixelSize(12);
    p_painter->setFont(font);
    p_painter->setPen(Qt::white);
    // The caption is centred right of the first 40 pixels, which are the picture's icon field.
    const int textWidth = QFontMetrics(font).horizontalAdvance(m_text);
    p_painter->drawStaticText((shown.width() - 40 - textWidth) / 2 + 40, 2, QStaticText(m_text));
}

void supermodule::saveXml(QDomElement& p_parent, QDomDocument& p_document) const
{
    saveWith(*this, p_parent, p_document);
}

void supermodule::saveCopyXml(QDomElement& p_parent, QDomDocument& p_document) const
{
    const std::unique_ptr<supermodule> copy(clone());
    saveWith(copy ? *copy : *this, p_parent, p_document);
}

void supermodule::saveWith(const supermodule& p_parameters, QDomElement& p_parent,
                           QDomDocument& p_document) const
{
    QDomElement element = p_document.createElement(QStringLiteral("module"));
    // Meant: written as reals and read as integers; stored files are like that.
    element.setAttribute(QStringLiteral("x"), scenePos().x());
    element.setAttribute(QStringLiteral("y"), scenePos().y());
    element.setAttribute(QStringLiteral("id"), id);
    element.setAttribute(QStringLiteral("ownid"), ownid);
    element.setAttribute(QStringLiteral("moduleKey"), moduleKey);
    p_parameters.writeAttributes(element);
    p_parent.appendChild(element);
}

void supermodule::loadXml(const QDomElement& p_element)
{
    ownid = p_element.attribute(QStringLiteral("ownid")).toInt();
    moduleKey = p_element.attribute(QStringLiteral("moduleKey")).toInt();
    // A value with a fraction is no integer and reads as 0.
    const int y = p_element.attribute(QStringLiteral("y")).toInt();
    const int x = p_element.attribute(QStringLiteral("x")).toInt();
    setPos(qBound(-s_farthest, x, s_farthest), qBound(-s_farthest, y, s_farthest));
}

void supermodule::writeAttributes(QDomElement&) const {}

QDomElement supermodule::paramsElement() const
{
    QDomDocument document;
    QDomElement element = document.createElement(QStringLiteral("module"));
    writeAttributes(element);
    return element.attributes().isEmpty() ? QDomElement() : element;
}

const Chooser* supermodule::popUpChooser(int) const { return nullptr; }

void supermodule::setParamIndex(int) {}

void supermodule::setNumberKey(int) {}

void supermodule::setPanelValue(int, int) {}

void supermodule::mousePressEvent(QGraphicsSceneMouseEvent* p_event)
{
    QGraphicsItem::mousePressEvent(p_event);
}

void supermodule::mouseMoveEvent(QGraphicsSceneMouseEvent*) {}

void supermodule::mouseReleaseEvent(QGraphicsSceneMouseEvent* p_event)
{
    QGraphicsItem::mouseReleaseEvent(p_event);
}

void supermodule::mouseDoubleClickEvent(QGraphicsSceneMouseEvent*) {}

QVariant supermodule::itemChange(GraphicsItemChange p_change, const QVariant& p_value)
{
    if (p_change == ItemSceneHasChanged && scene()) {
        tellButtons();
    }
    return QGraphicsItem::itemChange(p_change, p_value);
}

void supermodule::tellButtons()
{
    if (!m_buttonsTold) {
        m_buttonsTold = true;
        createButtons();
    }
}

int supermodule::buttonCount()
{
    tellButtons();
    return m_buttons.size();
}

QRectF supermodule::buttonRect(int p_index)
{
    tellButtons();
    return m_buttons.at(p_index)->rect();
}

QAbstractButton* supermodule::button(int p_index)
{
    if (p_index < 0 || p_index >= buttonCount()) {
        return nullptr;
    }
    m_buttons.at(p_index)->keep();
    return m_buttons.at(p_index)->wake();
}

QPushButton* supermodule::liveButton(int p_index) const
{
    return 0 <= p_index && p_index < m_buttons.size() ? m_buttons.at(p_index)->widget() : nullptr;
}

QPushButton* supermodule::wakeButton(int p_index)
{
    tellButtons();
    return m_buttons.at(p_index)->wake();
}

void supermodule::buttonMade(int, QPushButton&) {}

void supermodule::addButton(ButtonSpec p_spec)
{
    m_buttons.append(new ModuleButton(*this, m_buttons.size(), std::move(p_spec)));
}

void supermodule::showOnButton(int p_index, const QString& p_text)
{
    if (m_buttonsTold) {
        m_buttons.at(p_index)->setText(p_text);
    }
}

void supermodule::moveButton(int p_index, int p_x)
{
    if (m_buttonsTold) {
        m_buttons.at(p_index)->moveTo(p_x);
    }
}

int supermodule::buttonCentre(int p_index) const
{
    const ModuleButton* button = m_buttons.at(p_index);
    return static_cast<int>(qRound(button->scenePos().x()) + 0.5 * button->rect().width());
}

void supermodule::OnSetParam(int p_mode)
{
    graphicsItem_Param* popUp = graphicsItem_Param::shared(scene());
    popUp->setModule(this);
    popUp->setMode(p_mode);
    const QRectF rect = boundingRect();
    popUp->setPos(pos().x() + 0.5 * rect.width() - 0.5 * popUp->boundingRect().width(),
                  pos().y() + rect.height() + 10);
}

void supermodule::OnSetParamByPos(int p_mode, int p_point)
{
    graphicsItem_Param* popUp = graphicsItem_Param::shared(scene());
    popUp->setModule(this);
    popUp->setMode(p_mode);
    // 140 whatever the block's height: the pop-up of a loop stays under its button.
    popUp->setPos(p_point - 0.5 * popUp->boundingRect().width(), pos().y() + 140 + 10);
}

void supermodule::OnSetNumber(uint32_t p_numberOption)
{
    focusModule = this;
    if (ModuleHost* host = moduleHost()) {
        host->raiseNumKeyboard(p_numberOption);
    }
}

void supermodule::OnSetVoice(int p_map)
{
    focusModule = this;
    if (ModuleHost* host = moduleHost()) {
        host->raiseVoice(p_map);
    }
}

void supermodule::OnSetExpression(int p_map)
{
    focusModule = this;
    if (ModuleHost* host = moduleHost()) {
        host->raiseExpression(p_map);
    }
}

void supermodule::onSetPanel(int p_panelType, int p_paramId)
{
    focusModule = this;
    if (ModuleHost* host = moduleHost()) {
        host->raisePanel(p_panelType, p_paramId);
    }
}

QDebug operator<<(QDebug p_debug, const supermodule* p_module)
{
    p_debug << static_cast<const void*>(p_module);
    if (p_module) {
        p_debug << " Id " << p_module->id << "key " << p_module->moduleKey;
    }
    return p_debug;
}
