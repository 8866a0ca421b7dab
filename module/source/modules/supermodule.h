#pragma once

#include "modules/boundsrule.h"
#include "modules/collisionitem.h"
#include "modules/itemtype.h"
#include "modules/jointpicture.h"

#include <QDomElement>
#include <QGraphicsPathItem>
#include <QGraphicsPixmapItem>
#include <QObject>
#include <QVector>

#include <cstdint>
#include <memory>

class graphicsItem_Param;
class ModuleButton;
class QAbstractButton;
class QGraphicsScene;
class QPushButton;
struct ButtonSpec;
struct Chooser;

/**
 * Base of all blocks: a graphics item of the canvas, a node of the program graph, a unit of the
 * project file and the source of one fragment of generated text.
 *
 * A block has one parent link and three child links. A sequence of statements is a chain along
 * next(); a loop's body hangs on left() as a chain of its own; right() belongs to a two-branch
 * shape that no block of the present catalogue has, but that every walk honours. The root of a
 * chain is the block without a parent. Links change through the operations here alone.
 *
 * Blocks are heap objects that the document owns: they are deleted by deleteTree(), or with the
 * program or the document. All coordinates are scene units; blocks are top-level items, so pos() is
 * the scene position. Interface thread only.
 */
class supermodule : public QObject, public QGraphicsItem
{
    Q_OBJECT
    Q_INTERFACES(QGraphicsItem)

public:
    enum { Type = ModuleItemType };

    supermodule(int p_id, const QString& p_imagePath, const QString& p_pressedPath,
                const QString& p_text);
    ~supermodule() override;
    supermodule& operator=(const supermodule&) = delete;

    /** The block that an item is, or null if it is none. */
    static supermodule* fromItem(QGraphicsItem* p_item);
    /** The block that is seen where an item lies: the item, or that of which it is a part. */
    static supermodule* seenAs(QGraphicsItem* p_item);

    /** Block type, the factory's selector; never changes. */
    const int id;
    /** Instance key as it stands in the file; 0 until given. */
    int moduleKey = 0;
    /** id of the root of the program slot that holds the block; 0 is the main program. */
    int ownid = 0;
    /** True while the block is dragged. */
    bool m_moved = false;

    /**
     * The key under which moduleMap knows the block; 0 for none. It may differ from moduleKey:
     * a load and a paste register blocks anew.
     */
    int registryKey() const { return m_registryKey; }

    /** Palette picture of the block, as a resource path. */
    QString imagePath() const { return m_imagePath; }
    /** Resource path of the picture that the base class paints. */
    QString pressedPath() const { return m_pressedPath; }
    /** Caption: the tool tip, and the text that the base class paints. */
    QString text() const { return m_text; }
    /** Changes the caption that is painted. */
    void setText(const QString& p_text);

    // Graphics item.
    int type() const override { return Type; }
    /** Size of the block; (0, 0, 120, 140) by default. */
    QRectF boundingRect() const override;
    void paint(QPainter* p_painter, const QStyleOptionGraphicsItem* p_option,
               QWidget* p_widget) override;

    // Text, storage, copy.
    /** The block's fragment of C text. */
    virtual QString cCode() const = 0;
    /** The block's fragment of Python text. No block of the present catalogue has one. */
    virtual QString pythonCode() const { return QString(); }
    /** Appends the block's `module` element to p_parent, without its children. */
    void saveXml(QDomElement& p_parent, QDomDocument& p_document) const;
    /** The same for the clipboard: with the parameters that a copy keeps, see clone(). */
    void saveCopyXml(QDomElement& p_parent, QDomDocument& p_document) const;
    /** Sets the block from its `module` element. A missing attribute reads as 0. */
    virtual void loadXml(const QDomElement& p_element);
    /**
     * A copy without links, connectors and key; null where a block can't be copied. Meant: some
     * blocks forget a parameter here, and copy and paste show it; the design says so.
     */
    virtual supermodule* clone() const = 0;
    /**
     * A detached element with the parameter attributes alone; null for a block without any. Its
     * document is gone: it is there to be read, not to be written to.
     */
    virtual QDomElement paramsElement() const;

    // Values that come back from choosers; what the value means is the block's own matter.
    /** What the pop-up offers in a mode; null, as here, where there is no such mode. */
    virtual const Chooser* popUpChooser(int p_mode) const;
    /** Receives the index of the button chosen in the pop-up. */
    virtual void setParamIndex(int p_index);
    /** Receives a key code of the number keyboard, or the 0-based index of an icon or text panel.
     */
    virtual void setNumberKey(int p_key);
    /** Receives the value of a panel that was opened with a parameter id. */
    virtual void setPanelValue(int p_paramId, int p_value);
    /** Meant: a hook of the design that no class overrides and nothing calls. */
    virtual void updateParams() {}

    /** True for a block that only shows where another one would go: it is no part of a program. */
    virtual bool isPreview() const { return false; }

    /**
     * Puts a block that has just been built into a scene: with its connectors, which are made
     * unless they are there, movable and selectable. Without a scene only what it is to have
     * there is made. Its key is the registry's matter.
     */
    void enterScene(QGraphicsScene* p_scene);

    // Links (modulelinks.cpp).
    supermodule* parentModule() const { return m_parent; }
    /** What hangs on a link; null where nothing does, and for NoLink. */
    supermodule* child(LinkType p_type) const;
    /** The link on which a block hangs directly; NoLink for any other block and for null. */
    LinkType linkOf(const supermodule* p_child) const;
    /**
     * Links p_module here; what stood there goes on behind p_module's chain, or stays as a loose
     * chain where nothing can follow that. Lays the program out anew. Does nothing for NoLink.
     */
    void insert(LinkType p_type, supermodule* p_module);
    supermodule* next() const { return m_next; }
    supermodule* left() const { return m_left; }
    supermodule* right() const { return m_right; }
    /** Makes the block's connectors. Called once, by whoever builds the block or enterScene(). */
    virtual void createCollisions();
    bool hasConnector(LinkType p_type) const;
    /**
     * The connector of a link, or null. The item is made when it is first asked for: a scene takes
     * much longer for an item more than for a place.
     */
    collisionItem* connector(LinkType p_type) const;
    /** The area of a link's connector in block coordinates; null without one. */
    QRectF connectorRect(LinkType p_type) const;
    /** True where a connector of a visible block is: nothing is seen there, but it isn't empty. */
    static bool isOnConnector(const QPointF& p_at);
    /** Moves a connector along with the block's right edge. Does nothing without one. */
    void moveConnector(LinkType p_type, qreal p_x);
    /** The item that holds link lines, at z value -10; made when it is first asked for. */
    QGraphicsPathItem& pathItem();
    /** The selection frame, hidden until setSelectTree(); made when it is first asked for. */
    QGraphicsPixmapItem& selectItem();
    /** Draws the selection frame anew if there is one: the block's shape has changed. */
    void updateSelectItem();
    /** Links p_module behind the last block of this chain. Lays nothing out. */
    void appendModule(supermodule* p_module);
    /** insert() as this block's next. */
    void insertModule(supermodule* p_module) { insert(NextLink, p_module); }
    /** insert() into the body. */
    void setLeftModule(supermodule* p_module) { insert(LeftLink, p_module); }
    /** insert() into the right branch. */
    void setRightModule(supermodule* p_module) { insert(RightLink, p_module); }
    /** Hangs a chain on a free link. Lays nothing out: for whoever builds a tree. */
    void hangModule(LinkType p_type, supermodule* p_module);
    /** The reverse: unlinks a direct child and lays nothing out. False for any other block. */
    bool unhangModule(supermodule* p_child);
    /** True if bodies would stand deeper in one another than MaximalNesting with p_module here. */
    bool wouldNestTooDeep(LinkType p_type, const supermodule* p_module) const;
    /** Unlinks a direct child and lays the rest of the program out anew; ignores any other block.
     */
    void removeChild(supermodule* p_child);
    /** Unlinks this block from its parent, if it has one, and lays out what stays. */
    void detachFromParent();
    /**
     * The connectors of other visible blocks that the block touches where it stands, those of
     * newer blocks first. Left out is where bodies would stand deeper in one another than
     * MaximalNesting.
     */
    QList<collisionItem*> touchedConnectors() const;
    /**
     * Links the block, where it stands, to the first free connector that it touches and that
     * doesn't hang under it. p_target and p_type tell where. False, and the block unlinked, if
     * there is none.
     */
    bool CollisionDetection(supermodule*& p_target, int& p_type);
    /** Distance of the block's grip to a connector in scene units, rounded down. */
    int distanceTo(const collisionItem& p_connector) const;

    // Layout (modulelayout.cpp).
    /**
     * Places everything that follows this block and the bodies in it, and returns the last block of
     * the chain. Linear in their number.
     */
    supermodule* updateLayout();
    /** updateLayout() from the root of the tree. */
    void updateTree();
    /**
     * Grows the four scene bounds, rounded, over this block and returns them as a rectangle of
     * (left, top, right, bottom). A bound that lies further out already stays.
     */
    QRect extent(int& p_left, int& p_top, int& p_right, int& p_bottom);
    /**
     * How the block grows scene bounds. Where p_laidOut is true all under the block has just been
     * laid out, and what that found is used.
     */
    virtual BoundsRule boundsRule(bool p_laidOut) const;
    /** The corners that are filled, as of the last layout, as a neighbour is linked there. */
    BodyCorners filledCorners() const { return m_filledCorners; }
    /** Fills corners, or makes them round. For layouts, which paint anew. */
    void fillCorners(BodyCorners p_corners, bool p_filled);

    // Tree (moduletree.cpp).
    supermodule* rootOf();
    supermodule* lastOf();
    /** True when p_a stands on the parent path of p_b, p_b itself not counted. */
    static bool isAncestor(const supermodule* p_a, const supermodule* p_b);
    /** True when p_module is this block or stands anywhere under it. */
    bool containsModule(const supermodule* p_module) const;
    /** How many bodies, one in the other, the block stands in. */
    int depth() const;
    /** Opacity 0.5 if dim, else 1.0, for this block and all under it. */
    void setOpacityTree(bool p_dim);
    void setVisibleTree(bool p_visible);
    /** Gives the block its selection frame, a resource path; empty for none. Copies have it too. */
    void setSelectPicture(const QString& p_path);
    /** Shows or hides the selection frame of this block and of all under it. */
    void setSelectTree(bool p_selected);
    void setTreeZValue(int p_z);
    /** True when the root stands in rootModules or taskModules: the block is part of a program. */
    bool isInProgram();
    /** Full opacity for a chain of a program, 0.5 for a loose one. */
    void refreshOpacity();
    /** Updates layout, opacity and stacking once the block is linked or placed. */
    void updateTreeAndOpacity();
    /** True when the root is a slot's root other than the main program's. */
    bool isSubProgramBlock();
    /**
     * Copies a block and all under it into the block's scene, linked alike, with connectors and
     * flags but without keys and layout; null for null. Where a block can't be copied, its chain
     * ends there. Meant: without a caller; for code that wants blocks without the clipboard's text.
     */
    static supermodule* deepClone(const supermodule* p_module);
    /**
     * Deletes a block and all under it; null is ignored. It must have been unlinked from its
     * parent.
     */
    static void deleteTree(supermodule* p_module);
    /** Deletes blocks, all in one scene or in none, that nothing is linked to any longer. */
    static void deleteModules(QVector<supermodule*> p_modules);

    // Parameter buttons. They paint themselves; see ModuleButton for when they have widgets.
    int buttonCount();
    /** A button's place in block coordinates. */
    QRectF buttonRect(int p_index);
    /**
     * The widget of the p_index-th button; null when there is no such button. Whoever asks may
     * keep it: it is made if need be, and stays for as long as the block lives.
     */
    QAbstractButton* button(int p_index);
    /** The widget of a button if it has one just now, else null. */
    QPushButton* liveButton(int p_index) const;
    /** The widget of a button, valid until control returns to the event loop. */
    QPushButton* wakeButton(int p_index);

public slots:
    /** Opens the pop-up in a mode, under the block's middle. */
    void OnSetParam(int p_mode);
    /** Opens the pop-up in a mode, centred on a scene x. */
    void OnSetParamByPos(int p_mode, int p_point);
    /** Makes this block the receiver of values and asks for the number keyboard. */
    void OnSetNumber(uint32_t p_numberOption);
    void OnSetVoice(int p_map);
    void OnSetExpression(int p_map);
    void onSetPanel(int p_panelType, int p_paramId = 0);

protected:
    supermodule(const supermodule& p_other);

    void mousePressEvent(QGraphicsSceneMouseEvent* p_event) override;
    /** Accepted and ignored: the view moves blocks, with all that hangs under them. */
    void mouseMoveEvent(QGraphicsSceneMouseEvent* p_event) override;
    void mouseReleaseEvent(QGraphicsSceneMouseEvent* p_event) override;
    /** Accepted and ignored. */
    void mouseDoubleClickEvent(QGraphicsSceneMouseEvent* p_event) override;

    /** Writes the block's own attributes; the common ones have been written already. */
    virtual void writeAttributes(QDomElement& p_element) const;
    QVariant itemChange(GraphicsItemChange p_change, const QVariant& p_value) override;

    /** Describes the buttons, by addButton(). */
    virtual void createButtons() {}
    /** Called when a button's widget has been made, for set-up beyond its spec. */
    virtual void buttonMade(int p_index, QPushButton& p_button);
    /** Adds a button to the block. */
    void addButton(ButtonSpec p_spec);
    /** Shows a text on a button; without effect before createButtons(). */
    void showOnButton(int p_index, const QString& p_text);
    /** Moves a button to an x; without effect before createButtons(). */
    void moveButton(int p_index, int p_x);
    /** The scene x of a button's middle, where OnSetParamByPos() wants the pop-up. */
    int buttonCentre(int p_index) const;
    /** The rule of a plain block of a size that stands where this one does. */
    BoundsRule plainBoundsRule(const QSizeF& p_size) const;
    /** Where paintSelection() paints, as the block is shaped now. */
    virtual QRectF selectionArea(const QPixmap& p_frame) const;
    /** Draws the selection frame from its picture's resource path, in block coordinates. */
    virtual void paintSelection(QPainter* p_painter, const QString& p_frame);
    /** Lays out the block's own body and returns the distance from here to the next block. */
    virtual qreal layoutOwn();
    /** Makes the connector of a link, of a kind, at a place in block coordinates. */
    void makeConnector(LinkType p_type, int p_kind, const QPointF& p_pos);

    /** Outer rectangle of a shape whose size depends on its content; loops only. */
    QRectF m_rect;

private:
    friend class ModuleButton;
    friend class ModuleRegistry;

    class SelectFrame;

    void tellButtons();
    /** Fills the joint of two neighbours in a chain as far as both reach. Null for none. */
    static void fillJoint(supermodule* p_before, supermodule* p_behind);

    /** Puts the loops around the block below it: presses and tool tips go to what lies on top. */
    void stackAboveLoops();
    void saveWith(const supermodule& p_parameters, QDomElement& p_parent,
                  QDomDocument& p_document) const;
    /** The member that holds a link; null for NoLink. */
    static supermodule* supermodule::*linkMember(LinkType p_type);
    void initialise();

    /** Where a link's connector is, and its item once somebody has asked for it. */
    struct Socket {
        int kind = 0;
        QPointF pos;
        bool isThere = false;
        std::unique_ptr<collisionItem> item;
    };
    /** Those of a link; null for NoLink. */
    Socket* socket(LinkType p_type) const;

    std::unique_ptr<QGraphicsPathItem> m_pathItem;
    mutable Socket m_nextCollision;
    mutable Socket m_leftCollision;
    mutable Socket m_rightCollision;
    /** Resource path of the frame's picture, which is loaded with the item. */
    QString m_selectPath;
    std::unique_ptr<SelectFrame> m_selectItem;
    supermodule* m_parent = nullptr;
    supermodule* m_next = nullptr;
    supermodule* m_left = nullptr;
    supermodule* m_right = nullptr;
    /**
     * Meant: a pop-up of the block's own, always null, as all blocks share one pop-up; a member of
     * the design.
     */
    std::unique_ptr<graphicsItem_Param> m_paramItem;
    QString m_imagePath;
    QString m_pressedPath;
    QString m_text;
    static bool isWorthPuttingFirst(const QVector<supermodule*>& p_modules);
    /** Brings blocks to the front of the lists in which a scene looks for its items. */
    static void putFirst(QGraphicsScene& p_stage, QVector<supermodule*>& p_byAge);

    /** Grows from block to block, as they are made. */
    qint64 m_age = 0;
    int m_registryKey = 0;
    BodyCorners m_filledCorners;
    /** The block's place in liveModules. */
    int m_liveIndex = -1;
    /** How many bodies and branches hang on all blocks that there are. */
    static int s_bodies;

    bool m_buttonsTold = false;
    /** Children of the block, which deletes them. */
    QVector<ModuleButton*> m_buttons;
};

/** Prints a block for the log: its address, type and instance key. */
QDebug operator<<(QDebug p_debug, const supermodule* p_module);
