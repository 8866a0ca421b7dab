#include "randomprogram.h"

#include "actions/model/actionimage.h"
#include "base/recentfiles.h"
#include "modules/catalogue/blocktables.h"
#include "modules/catalogue/modulefactory.h"
#include "modules/documentstate.h"
#include "modules/graphicsitem_param.h"
#include "modules/mainmodule.h"
#include "proj/numberspanel.h"
#include "proj/tzblockwidget.h"
#include "project/projectfile.h"
#include "shell/tztoolbar.h"
#include "support/canvas/blockdata.h"
#include "support/canvas/canvasfixture.h"
#include "support/canvas/documentinvariants.h"
#include "support/canvas/documentpicture.h"
#include "support/system/answers.h"

#include <QApplication>
#include <QClipboard>
#include <QDragEnterEvent>
#include <QMimeData>
#include <QPushButton>
#include <QTest>

#include <algorithm>

namespace
{
const int s_deepestLoop = 6;
/** Connectors nearer to one another than this could be taken for one another. */
const qreal s_apart = 15;

QPointF connectorAt(const supermodule* p_owner, LinkType p_link)
{
    return p_owner->connector(p_link)->scenePos();
}

/** Where a block stands whose grip lies on a connector. */
QPointF originAt(const QPointF& p_connector, const QSizeF& p_block)
{
    return p_connector + QPointF(0, 30 - p_block.height() / 2);
}
} // namespace

RandomProgram::RandomProgram(quint32 p_seed, const QString& p_folder)
    : m_chance(p_seed), m_folder(p_folder), m_view(*m_window.view()), m_goesDeep(p_seed % 3 == 0)
{
    recentFiles.clear();
    QGuiApplication::clipboard()->clear();
    m_window.resize(1280, 900);
    m_window.show();
    m_window.activateWindow();
    if (!QTest::qWaitForWindowActive(&m_window)) {
        qFatal("the window doesn't become active");
    }
    documentModified = false;
    m_window.toolBar()->setProgramName(QStringLiteral("P%1").arg(p_seed % 100000));
    // Poses of servos ride behind the program: any there may be.
    ActionImage& actions = m_window.document().actions();
    for (int page = 0; page < actionPageCount; ++page) {
        actions.page(page)->repeat = static_cast<quint8>(below(256));
        actions.step(page, below(actionStepCount))->runTime = static_cast<qint16>(below(30000));
    }
    m_model.add(0, m_view.mainBlock()->registryKey());
}

RandomProgram::~RandomProgram() { documentModified = false; }

int RandomProgram::below(int p_limit)
{
    return static_cast<int>(m_chance() % static_cast<quint32>(qMax(1, p_limit)));
}

QList<supermodule*> RandomProgram::blocks() const
{
    QList<supermodule*> list = canvasBlocks(m_view);
    // The scene's own order may hang on addresses.
    std::sort(list.begin(), list.end(), [](const supermodule* p_a, const supermodule* p_b) {
        return p_a->registryKey() < p_b->registryKey();
    });
    return list;
}

void RandomProgram::showPoint(const QPointF& p_scenePos)
{
    const QRect inner = m_view.viewport()->rect().adjusted(150, 100, -200, -100);
    if (!inner.contains(m_view.mapFromScene(p_scenePos))) {
        m_view.centerOn(p_scenePos);
    }
}

QPoint RandomProgram::at(const QPointF& p_scenePos) const
{
    return m_view.mapFromScene(p_scenePos);
}

QPoint RandomProgram::somePoint()
{
    const QSize size = m_view.viewport()->size();
    return QPoint(below(size.width()), below(size.height()));
}

int RandomProgram::nextType()
{
    // Every type once, then every type again; and loops more often, for they do the hard things.
    if (below(m_goesDeep ? 2 : 4) == 0) {
        return loopTypes().at(below(loopTypes().size()));
    }
    if (m_deck.isEmpty()) {
        for (const BlockRecord& record : blockRecords()) {
            if (record.category >= 0) {
                m_deck.append(record.id);
            }
        }
    }
    return m_deck.takeAt(below(m_deck.size()));
}

bool RandomProgram::standsAlone(const Place& p_place) const
{
    const QPointF at = connectorAt(p_place.owner, p_place.link);
    const QList<supermodule*> all = blocks();
    for (const supermodule* block : all) {
        for (const LinkType link : {NextLink, LeftLink}) {
            const bool other = block != p_place.owner || link != p_place.link;
            if (other && block->connector(link) &&
                QLineF(at, connectorAt(block, link)).length() < s_apart) {
                return false;
            }
        }
    }
    return true;
}

QVector<RandomProgram::Place> RandomProgram::placesFor(int p_type)
{
    QVector<Place> places;
    QVector<Place> ends;
    QVector<Place> deepest;
    int depthSoFar = 0;
    const QList<supermodule*> all = blocks();
    for (const supermodule* block : all) {
        for (const LinkType link : {NextLink, LeftLink}) {
            const Place place{block, link};
            const int depth = m_model.depth(block->registryKey()) + (link == LeftLink ? 1 : 0);
            const bool fits = depth < s_deepestLoop || !ProgramModel::isLoop(p_type);
            if (!block->connector(link) || !fits || !standsAlone(place)) {
                continue;
            }
            places.append(place);
            if (link == NextLink ? !block->next() : !block->left()) {
                ends.append(place);
            }
            if (depth > depthSoFar) {
                deepest.clear();
                depthSoFar = depth;
            }
            if (depth == depthSoFar) {
                deepest.append(place);
            }
        }
    }
    // Anywhere, or where programs mostly grow.
    const int where = below(6);
    if (where == 0 || (m_goesDeep && where < 4)) {
        return deepest;
    }
    return where < 3 && !ends.isEmpty() ? ends : places;
}

QPointF RandomProgram::emptyPlace(const QSizeF& p_size)
{
    const QList<supermodule*> all = blocks();
    QPointF best(800, 800);
    for (int i = 0; i < 20; ++i) {
        const QPointF place =
            m_view.mainBlock()->scenePos() + QPointF(200 + below(1500), 300 * (1 + below(6)));
        const QRectF rect = QRectF(place, p_size).adjusted(-20, -20, 20, 20);
        const bool free = std::none_of(all.begin(), all.end(), [&rect](const supermodule* p_each) {
            // With its connectors, which stand out.
            return rect.intersects(p_each->sceneBoundingRect().adjusted(0, 0, 80, 80));
        });
        if (free) {
            return place;
        }
        best = place + QPointF(0, 2500);
    }
    return best;
}

supermodule* RandomProgram::drop(int p_type, const std::function<QPoint()>& p_target)
{
    const std::unique_ptr<QMimeData> data(blockDrag(p_type));
    QWidget* viewport = m_view.viewport();
    const auto over = [&](const QPoint& p_at) {
        QDragMoveEvent move(p_at, Qt::CopyAction | Qt::MoveAction, data.get(), Qt::LeftButton,
                            Qt::NoModifier);
        QApplication::sendEvent(viewport, &move);
    };
    // In from the palette, by some way.
    const QPoint from(somePoint().x(), viewport->height() - 2);
    QDragEnterEvent enter(from, Qt::CopyAction | Qt::MoveAction, data.get(), Qt::LeftButton,
                          Qt::NoModifier);
    QApplication::sendEvent(viewport, &enter);
    for (int steps = below(3); steps > 0; --steps) {
        over(somePoint());
    }
    // A gap that was open elsewhere closes when another one opens, and what is aimed at moves.
    QPoint to;
    for (int i = 0; i < 6; ++i) {
        const QPoint aim = p_target();
        if (i > 1 && aim == to) {
            break;
        }
        to = aim;
        over(to);
    }
    supermodule* block = m_view.currentModule();
    QDropEvent drop(to, Qt::CopyAction | Qt::MoveAction, data.get(), Qt::LeftButton,
                    Qt::NoModifier);
    QApplication::sendEvent(viewport, &drop);
    m_types.insert(p_type);
    return block;
}

QStringList RandomProgram::putBlock()
{
    const int type = nextType();
    QSizeF size;
    {
        const std::unique_ptr<supermodule> sample(createModuleFromId(type));
        size = sample->boundingRect().size();
    }
    // The hand holds a block by the middle of its top edge.
    const auto handFor = [this, &size](const QPointF& p_origin) {
        return at(p_origin) + QPoint(static_cast<int>(size.width()) / 2, 0);
    };
    QString aim;
    supermodule* block = nullptr;
    const QVector<Place> places = placesFor(type);
    if (places.isEmpty() || below(10) == 0) {
        const QPointF place = emptyPlace(size);
        showPoint(place);
        aim = QStringLiteral("an empty place");
        block = drop(type, [&] { return handFor(place); });
        ++m_tally[QStringLiteral("loose drops")];
        m_model.add(type, block->registryKey());
    } else {
        const Place place = places.at(below(places.size()));
        const int owner = place.owner->registryKey();
        aim = QStringLiteral("link %1 of %2").arg(place.link).arg(owner);
        showPoint(connectorAt(place.owner, place.link));
        const bool occupied = place.link == NextLink ? place.owner->next() : place.owner->left();
        block = drop(type,
                     [&] { return handFor(originAt(connectorAt(place.owner, place.link), size)); });
        m_model.add(type, block->registryKey());
        m_model.link(block->registryKey(), owner, place.link);
        m_tally[QStringLiteral("drops into a chain")] += occupied ? 1 : 0;
        m_tally[QStringLiteral("drops that cut a chain")] +=
            occupied && !block->hasConnector(NextLink) ? 1 : 0;
        m_deepest = qMax(m_deepest, m_model.depth(block->registryKey()) +
                                        (ProgramModel::isLoop(type) ? 1 : 0));
    }
    const QStringList expected = m_model.outline();
    const QStringList found = documentOutline(m_view, Telling::Keys);
    QStringList broken = brokenInvariants(m_view);
    if (found != expected) {
        broken << QStringLiteral("Block %1 dropped at %2 gives\n").arg(type).arg(aim) +
                      found.join(QLatin1Char('\n')) + QStringLiteral("\nand not\n") +
                      expected.join(QLatin1Char('\n'));
    }
    if (broken.isEmpty()) {
        for (int settings = below(4); settings > 1; --settings) {
            setParameter(block);
        }
    }
    return broken;
}

QStringList RandomProgram::build()
{
    QStringList broken;
    for (int count = 3 + below(28); count > 0 && broken.isEmpty(); --count) {
        broken = putBlock();
    }
    return broken;
}

void RandomProgram::setParameter(supermodule* p_block)
{
    const int buttons = p_block->buttonCount();
    if (buttons == 0) {
        return;
    }
    const BlockAttributes before = ownAttributes(p_block);
    const QPointF centre = p_block->mapToScene(p_block->buttonRect(below(buttons)).center());
    showPoint(centre);
    QTest::mouseClick(m_view.viewport(), Qt::LeftButton, Qt::NoModifier, at(centre));
    const graphicsItem_Param* popUp = graphicsItem_Param::existing();
    QString done;
    if (popUp && popUp->isVisible()) {
        done = answerPopUp();
    } else if (m_window.blockWidget()->isChoosing()) {
        done = answerPalette();
    }
    m_tally[done] += ownAttributes(p_block) != before ? 1 : 0;
}

QString RandomProgram::answerPopUp()
{
    const graphicsItem_Param* popUp = graphicsItem_Param::existing();
    const QGraphicsItem* choice = popUp->childItems().at(below(popUp->buttons().size()));
    const QPointF centre = choice->sceneBoundingRect().center();
    QTest::mouseClick(m_view.viewport(), Qt::LeftButton, Qt::NoModifier, at(centre));
    return QStringLiteral("choices in the pop-up");
}

QString RandomProgram::answerPalette()
{
    const auto* row = qobject_cast<RowPanel*>(m_window.blockWidget()->panel());
    if (!row || row->buttons().isEmpty()) {
        return QStringLiteral("empty choosers");
    }
    if (qobject_cast<const NumbersPanel*>(row)) {
        return typeNumber(row->buttons());
    }
    QTest::mouseClick(row->buttons().at(below(row->buttons().size())), Qt::LeftButton);
    return QStringLiteral("choices in the palette");
}

QString RandomProgram::someNumber()
{
    // Mostly short times, for somebody is to wait for them; sometimes whatever fingers hit.
    const auto digit = [this] { return QString::number(below(10)); };
    switch (below(8)) {
    case 0:
        return digit() + QLatin1Char('.') + digit() + digit();
    case 1:
    case 2:
        return QStringLiteral("0.") + digit();
    case 3:
        return QLatin1Char('-') + digit() + digit();
    case 4: {
        static const QString s_keys = QStringLiteral("0123456789.-<");
        QString keys;
        for (int i = below(9); i >= 0; --i) {
            keys += s_keys.at(below(s_keys.size()));
        }
        return keys;
    }
    default:
        return digit();
    }
}

QString RandomProgram::typeNumber(const QList<QPushButton*>& p_keys)
{
    const QString number = someNumber();
    const bool onScreen = below(2) == 0;
    for (const QChar ch : number) {
        const bool erase = ch == QLatin1Char('<');
        if (onScreen) {
            // The key that erases bears a picture and no text.
            const QString text = erase ? QString() : QString(ch);
            for (QPushButton* button : p_keys) {
                if (button->text() == text) {
                    QTest::mouseClick(button, Qt::LeftButton);
                }
            }
        } else if (erase) {
            key(Qt::Key_Backspace);
        } else {
            key(ch.toLatin1());
        }
    }
    return onScreen ? QStringLiteral("numbers tapped") : QStringLiteral("numbers typed");
}

void RandomProgram::key(int p_key, Qt::KeyboardModifiers p_modifiers)
{
    QTest::keyClick(&m_view, static_cast<Qt::Key>(p_key), p_modifiers);
}

void RandomProgram::mouse(QEvent::Type p_type, const QPoint& p_at)
{
    if (p_type == QEvent::MouseButtonPress) {
        QTest::mousePress(m_view.viewport(), Qt::LeftButton, Qt::NoModifier, p_at);
    } else if (p_type == QEvent::MouseButtonRelease) {
        QTest::mouseRelease(m_view.viewport(), Qt::LeftButton, Qt::NoModifier, p_at);
    } else {
        QMouseEvent event(p_type, p_at, m_view.viewport()->mapToGlobal(p_at), Qt::NoButton,
                          Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(m_view.viewport(), &event);
    }
}

void RandomProgram::hover(const QPoint& p_at)
{
    QMouseEvent event(QEvent::MouseMove, p_at, m_view.viewport()->mapToGlobal(p_at), Qt::NoButton,
                      Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(m_view.viewport(), &event);
}

QString RandomProgram::description() const
{
    return documentOutline(m_view, Telling::Parameters).join(QLatin1Char('\n'));
}

QString RandomProgram::text() const { return m_view.generateProjectCode(1); }
