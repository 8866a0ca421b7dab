#include "canvas/linkcandidates.h"
#include "dropping.h"
#include "modules/catalogue/modulefactory.h"
#include "modules/documentstate.h"
#include "modules/feedbackmodule.h"
#include "modules/mainmodule.h"
#include "modules/moduleregistry.h"
#include "support/canvas/canvasfixture.h"
#include "support/canvas/singleblock.h"
#include "support/system/datatable.h"

#include <QApplication>
#include <QFontMetrics>
#include <QGraphicsPixmapItem>
#include <QGraphicsScene>
#include <QLoggingCategory>
#include <QPainter>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

namespace
{
enum BlockId {
    Speed = 100,
    Wait = 101,
    Forward = 103,
    TimedForward = 104,
    Stop = 105,
    Counted = 301,
    Endless = 303,
    UntilInfrared = 306,
    UntilTouch = 307
};

/** The argument by which this program is asked to make a block that doesn't exist. */
const char s_unknownBlock[] = "--make-unknown-block";

/** A block of no class of the catalogue. */
class plainBlock : public supermodule
{
public:
    explicit plainBlock(int p_id = 1000, const QString& p_text = QString(),
                        const QString& p_path = QString())
        : supermodule(p_id, p_path, p_path, p_text)
    {
    }
    QString cCode() const override { return QString(); }
    supermodule* clone() const override { return new plainBlock(*this); }
    void makeRightConnector() { makeConnector(RightLink, 3, QPointF(30, 120)); }
};

/** A block of the catalogue that stands by itself in a scene. */
supermodule* place(QGraphicsScene& p_scene, int p_id, const QPointF& p_pos)
{
    supermodule* module = createModuleFromId(p_id);
    p_scene.addItem(module);
    module->setPos(p_pos);
    return module;
}

/** Trees of blocks without a scene. */
class Trees
{
public:
    void clear()
    {
        for (const QPointer<supermodule>& root : qAsConst(m_roots)) {
            supermodule::deleteTree(root);
        }
        m_roots.clear();
    }
    supermodule* root(int p_id, const QPointF& p_pos = QPointF())
    {
        supermodule* module = createModuleFromId(p_id);
        module->setPos(p_pos);
        m_roots.append(module);
        return module;
    }
    static supermodule* inBody(supermodule* p_loop, int p_id)
    {
        supermodule* module = createModuleFromId(p_id);
        if (p_loop->left()) {
            p_loop->left()->appendModule(module);
        } else {
            p_loop->setLeftModule(module);
        }
        return module;
    }
    static supermodule* behind(supermodule* p_module, int p_id)
    {
        supermodule* module = createModuleFromId(p_id);
        p_module->insertModule(module);
        return module;
    }

private:
    QList<QPointer<supermodule>> m_roots;
};

/** Holds the process-wide roots of the document and puts them back. */
class RootsKept
{
public:
    ~RootsKept()
    {
        rootModules = m_roots;
        taskModules = m_tasks;
    }

private:
    const QList<supermodule*> m_roots = rootModules;
    const QList<supermodule*> m_tasks = taskModules;
};

QImage painted(supermodule* p_module, const QSize& p_size)
{
    QImage image(p_size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::black);
    QPainter painter(&image);
    p_module->paint(&painter, nullptr, nullptr);
    return image;
}

QStringList* s_log = nullptr;

void logMessage(QtMsgType, const QMessageLogContext&, const QString& p_text)
{
    if (s_log) {
        s_log->append(p_text);
    }
}

/** Links a chain to a block. */
using Insert = void (supermodule::*)(supermodule*);
} // namespace

Q_DECLARE_METATYPE(Insert)

class BlockEngineTest : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { m_trees.clear(); }

    void aDeepCopyHasTheSameBlocksInTheSamePlacesButNoKeys()
    {
        const RootsKept kept;
        CanvasFixture canvas;
        canvas.main()->ownid = 0;
        supermodule* loop = canvas.dropBehind(canvas.main(), Counted);
        loop->setNumberKey(Qt::Key_7);
        supermodule* inBody = createModuleFromId(Forward);
        canvas.view.scene()->addItem(inBody);
        ModuleRegistry::add(inBody);
        inBody->ownid = 404;
        loop->setLeftModule(inBody);
        supermodule* last = canvas.dropBehind(loop, Speed);
        supermodule* copy = supermodule::deepClone(loop);
        QCOMPARE(CanvasFixture::ids(copy), (QList<int>{Counted, Speed}));
        QCOMPARE(CanvasFixture::ids(copy->left()), QList<int>{Forward});
        QVERIFY(copy != loop && copy->left() != inBody && copy->next() != last);
        QVERIFY(!copy->parentModule());
        QCOMPARE(copy->cCode(), loop->cCode());
        QVERIFY(copy->cCode().startsWith(QStringLiteral("for(int i = 0;i < 107;")));
        for (const supermodule* each : {copy, copy->left(), copy->next()}) {
            QCOMPARE(each->scene(), canvas.view.scene());
            QCOMPARE(each->registryKey(), 0);
            QCOMPARE(each->moduleKey, 0);
            QCOMPARE(each->ownid, 0);
            QVERIFY(each->hasConnector(NextLink));
            QVERIFY(each->flags() & QGraphicsItem::ItemIsMovable);
        }
        QVERIFY(!supermodule::deepClone(nullptr));
        QVERIFY(!supermodule::deepClone(canvas.main()));
        supermodule::deleteTree(copy);
    }

    // The block itself.

    void aNewBlockHasNoKeyNoLinksAndIsNotDragged()
    {
        const plainBlock block;
        QCOMPARE(block.moduleKey, 0);
        QCOMPARE(block.ownid, 0);
        QVERIFY(!block.m_moved);
        QVERIFY(!block.parentModule() && !block.next() && !block.left() && !block.right());
        QVERIFY(!block.connector(NextLink) && !block.connector(LeftLink));
        QCOMPARE(block.boundingRect(), QRectF(0, 0, 120, 140));
        QVERIFY(
            !(block.flags() & (QGraphicsItem::ItemIsMovable | QGraphicsItem::ItemIsSelectable)));
    }

    void aBlockIsNamedModuleAndShowsItsCaptionAsToolTip()
    {
        plainBlock block(1000, QStringLiteral("caption"));
        QCOMPARE(block.data(256).toString(), QStringLiteral("module"));
        QCOMPARE(block.toolTip(), QStringLiteral("caption"));
        block.createCollisions();
        QCOMPARE(block.connector(NextLink)->data(256).toString(), QStringLiteral("Next"));
        QCOMPARE(block.connector(NextLink)->zValue(), 10.0);
        QCOMPARE(block.connector(NextLink)->boundingRect(), QRectF(0, 0, 60, 60));
        block.connector(NextLink)->setKind(1);
        QVERIFY(block.connector(NextLink)->boundingRect().isEmpty());
        QCOMPARE(block.pathItem().parentItem(), &block);
        QCOMPARE(block.pathItem().zValue(), -10.0);
        QCOMPARE(&block.pathItem(), &block.pathItem());
    }

    void aBlockHasTheSelectionFrameThatItIsGiven()
    {
        const QString path = QStringLiteral(":/select1.png");
        QVERIFY(!QPixmap(path).isNull());
        plainBlock block;
        const QGraphicsPixmapItem* frame = &block.selectItem();
        QCOMPARE(frame->parentItem(), &block);
        QVERIFY(!frame->isVisible());
        QCOMPARE(frame->pos(), QPointF(0, 0));
        QVERIFY(frame->pixmap().isNull());
        block.setSelectPicture(path);
        QCOMPARE(frame->pixmap().toImage(), QPixmap(path).toImage());
        QVERIFY(!frame->isVisible());
        const std::unique_ptr<supermodule> copy(block.clone());
        QCOMPARE(copy->selectItem().pixmap().toImage(), QPixmap(path).toImage());
        block.setSelectPicture(QString());
        QVERIFY(frame->pixmap().isNull());
        FeedbackModule preview;
        QVERIFY(preview.selectItem().pixmap().isNull());
        mainModule main(0, QStringLiteral(":/main.png"), QStringLiteral(":/main.png"), QString());
        QVERIFY(main.selectItem().pixmap().isNull());
    }

    void theBaseClassPaintsThePictureAndTheCaptionRightOfTheIcon()
    {
        const QString path = QStringLiteral(":/move_icon_160x120.png");
        const QPixmap pixmap(path);
        QVERIFY(pixmap.width() > 100);
        plainBlock plain(1000, QString(), path);
        plainBlock captioned(1000, QStringLiteral("HHH"), path);
        const QImage without = painted(&plain, pixmap.size());
        const QImage with = painted(&captioned, pixmap.size());
        QImage picture(pixmap.size(), QImage::Format_ARGB32_Premultiplied);
        picture.fill(Qt::black);
        QPainter(&picture).drawPixmap(0, 0, pixmap);
        QCOMPARE(without, picture);
        QFont font;
        font.setPixelSize(12);
        const int width = QFontMetrics(font).horizontalAdvance(QStringLiteral("HHH"));
        const int x = (pixmap.width() - 40 - width) / 2 + 40;
        QRect changed;
        for (int row = 0; row < with.height(); ++row) {
            for (int column = 0; column < with.width(); ++column) {
                if (with.pixel(column, row) != without.pixel(column, row)) {
                    changed |= QRect(column, row, 1, 1);
                }
            }
        }
        QVERIFY2(changed.width() > width / 2, "there is no caption");
        QVERIFY2(changed.left() >= x - 1 && changed.left() <= x + 3,
                 qPrintable(QStringLiteral("%1 for %2").arg(changed.left()).arg(x)));
        QVERIFY(changed.right() <= x + width + 1);
        QVERIFY(changed.top() >= 2 && changed.bottom() < 2 + 2 * 12);
    }

    void aStoredPlaceIsHeldWithinWhatALayoutCanAddUp()
    {
        QDomDocument document;
        QDomElement element = document.createElement(QStringLiteral("module"));
        plainBlock block(1000, QString(), QString());
        for (const int far : {1000000000, 1000000001, 2147483647}) {
            element.setAttribute(QStringLiteral("x"), far);
            element.setAttribute(QStringLiteral("y"), -far);
            block.loadXml(element);
            QCOMPARE(block.pos(), QPointF(1000000000, -1000000000));
        }
    }

    void theMainBlockPaintsItsPictureAlone()
    {
        CanvasFixture canvas;
        const QPixmap pixmap(QStringLiteral(":/main.png"));
        QVERIFY(!pixmap.isNull());
        QImage picture(pixmap.size(), QImage::Format_ARGB32_Premultiplied);
        picture.fill(Qt::black);
        QPainter(&picture).drawPixmap(0, 0, pixmap);
        QCOMPARE(painted(canvas.main(), pixmap.size()), picture);
        QCOMPARE(canvas.main()->boundingRect(), QRectF(0, 0, 140, 120));
        QCOMPARE(canvas.main()->pressedPath(), QStringLiteral(":/main.png"));
        QVERIFY(!canvas.main()->text().isEmpty());
    }

    void theMainBlockCanNotBeCloned()
    {
        CanvasFixture canvas;
        QCOMPARE(canvas.main()->clone(), nullptr);
        // A caller meets the null when the main block is copied: a press on it and Ctrl+C.
        canvas.dropBehind(canvas.main(), Forward);
        canvas.click(canvas.main()->scenePos() + QPointF(30, 30));
        canvas.key(Qt::Key_C, Qt::ControlModifier);
        canvas.view.OnPaste();
        QCOMPARE(canvas.blocks().size(), 2);
        QCOMPARE(canvas.brokenInvariants(), QStringList());
    }

    void aCloneHasTypePathsCaptionAndSlotButNoKeyNoLinksNoConnectors()
    {
        supermodule* block = m_trees.root(Forward);
        Trees::behind(block, Stop);
        block->ownid = 404;
        block->moduleKey = 7;
        const std::unique_ptr<supermodule> copy(block->clone());
        QCOMPARE(copy->id, static_cast<int>(Forward));
        QCOMPARE(copy->imagePath(), block->imagePath());
        QCOMPARE(copy->pressedPath(), block->pressedPath());
        QCOMPARE(copy->text(), block->text());
        QCOMPARE(copy->ownid, 404);
        QCOMPARE(copy->moduleKey, 0);
        QCOMPARE(copy->registryKey(), 0);
        QVERIFY(!copy->next() && !copy->parentModule());
        QVERIFY(!copy->hasConnector(NextLink));
    }

    void aBlockWithoutConnectorsIsDestroyedInPeace()
    {
        QGraphicsScene scene;
        auto* bare = new plainBlock;
        scene.addItem(bare);
        supermodule::deleteTree(bare);
        QCOMPARE(scene.items().size(), 0);
        auto* halfBare = new plainBlock;
        halfBare->createCollisions();
        QVERIFY(!halfBare->connector(LeftLink) && !halfBare->connector(RightLink));
        scene.addItem(halfBare);
        delete halfBare;
        QCOMPARE(scene.items().size(), 0);
        supermodule::deleteTree(nullptr);
    }

    void aBlockThatNothingButTheBaseClassOffersIgnoresValues()
    {
        plainBlock block;
        QDomDocument document;
        const auto stored = [&] {
            QDomElement parent = document.createElement(QStringLiteral("parent"));
            block.saveXml(parent, document);
            QString text;
            QTextStream stream(&text);
            parent.save(stream, 0);
            return text;
        };
        const QString before = stored();
        documentModified = false;
        block.setParamIndex(1);
        block.setNumberKey(Qt::Key_1);
        block.setPanelValue(1, 1);
        block.updateParams();
        QCOMPARE(stored(), before);
        QVERIFY(!documentModified);
        QVERIFY(block.paramsElement().isNull());
        QCOMPARE(block.pythonCode(), QString());
    }

    void thePreviewIsNeverTakenForTheMainBlock()
    {
        CanvasFixture canvas;
        QCOMPARE(canvas.view.preview()->id, canvas.main()->id);
        const QString empty = canvas.view.generateProjectCode(1);
        canvas.dragOver(Forward, dropPoint(canvas.main(), NextLink, Forward));
        // It opens the gap behind the main block, and says nothing.
        QCOMPARE(canvas.main()->next(), canvas.view.preview());
        QCOMPARE(canvas.view.generateProjectCode(1), empty);
        canvas.leave();
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("a.tlrx"));
        QVERIFY(canvas.view.saveFile(path));
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll().count(" id=\"0\""), 1);
        file.close();
        // Both live on after an opening, which tells blocks to be deleted from those to be kept.
        QCOMPARE(canvas.view.openFile(path), 0);
        QCOMPARE(canvas.main()->scenePos(), QPointF(100, 200));
        canvas.drop(Forward, dropPoint(canvas.main(), NextLink, Forward));
        QCOMPARE(CanvasFixture::ids(canvas.main()), (QList<int>{0, Forward}));
        QCOMPARE(canvas.brokenInvariants(), QStringList());
    }

    void thePreviewIsStoredLikeAPlainBlockAndHasNoText()
    {
        FeedbackModule preview;
        preview.setPos(3, 4);
        QDomDocument document;
        QDomElement parent = document.createElement(QStringLiteral("parent"));
        preview.saveXml(parent, document);
        const QDomElement stored = parent.firstChildElement(QStringLiteral("module"));
        QCOMPARE(stored.attributes().size(), 5);
        QCOMPARE(stored.attribute(QStringLiteral("x")), QStringLiteral("3"));
        QCOMPARE(stored.attribute(QStringLiteral("id")), QStringLiteral("0"));
        FeedbackModule other;
        other.loadXml(stored);
        QCOMPARE(other.pos(), QPointF(3, 4));
        QCOMPARE(preview.cCode(), QString());
        QCOMPARE(preview.pythonCode(), QString());
        QVERIFY(preview.paramsElement().isNull());
        QCOMPARE(preview.pressedPath(), QStringLiteral(":/feedback.png"));
        QCOMPARE(preview.text(), QString());
        const std::unique_ptr<supermodule> copy(preview.clone());
        QVERIFY(copy);
    }

    void aDyingBlockLeavesEveryListOfTheDocument()
    {
        const RootsKept kept;
        auto* block = new plainBlock;
        const int key = ModuleRegistry::add(block);
        rootModules.append(block);
        taskModules.append(block);
        focusModule = block;
        pressedModule = block;
        QCOMPARE(moduleMap.value(key), block);
        // Its address is looked for when it is gone, which an optimising compiler takes for a
        // mistake.
        supermodule* volatile address = block;
        delete block;
        supermodule* const gone = address;
        QVERIFY(!moduleMap.contains(key));
        QVERIFY(!rootModules.contains(gone));
        QVERIFY(!taskModules.contains(gone));
        QVERIFY(!focusModule);
        QVERIFY(!pressedModule);
        QVERIFY(!liveModules.contains(gone));
    }

    void aBlockHasOneRegistryKey()
    {
        ModuleRegistry::clear();
        QCOMPARE(nextModuleKey, 1);
        plainBlock first;
        plainBlock second;
        QCOMPARE(ModuleRegistry::add(&first), 1);
        QCOMPARE(ModuleRegistry::add(&second), 2);
        ModuleRegistry::addAs(9, &first);
        QCOMPARE(moduleMap.size(), 2);
        QCOMPARE(moduleMap.value(9), static_cast<supermodule*>(&first));
        ModuleRegistry::addAs(9, &second);
        QCOMPARE(moduleMap.size(), 1);
        QCOMPARE(first.registryKey(), 0);
        QCOMPARE(second.registryKey(), 9);
        QCOMPARE(nextModuleKey, 3);
        ModuleRegistry::clear();
        QCOMPARE(second.registryKey(), 0);
        QVERIFY(moduleMap.isEmpty());
        QCOMPARE(nextModuleKey, 1);
    }

    void theFactoryGivesNullForAnUnknownType()
    {
        // 401 and 404 to 433 are types of roots without a class.
        for (const int id : {-1, 1, 99, 302, 401, 404, 433, 907, 123456}) {
            QVERIFY2(!createModule(id, QString(), QString(), QString()),
                     qPrintable(QStringLiteral("a type that tests take for unknown: %1").arg(id)));
        }
    }

    void theFactoryFromARecordStopsTheProgramForAnUnknownType()
    {
        QProcess child;
        child.start(QCoreApplication::applicationFilePath(), {QLatin1String(s_unknownBlock)});
        QVERIFY(child.waitForFinished(30000));
        QCOMPARE(child.exitStatus(), QProcess::CrashExit);
        const QByteArray message = child.readAllStandardError();
        QVERIFY2(message.contains("\"module\""), message.constData());
        QVERIFY2(message.contains("supermodule,"), message.constData());
        QVERIFY2(message.contains("line 491"), message.constData());
        QVERIFY2(!message.contains("gone on"), message.constData());
    }

    // Bounds.

    void extentGrowsTheBoundsOverTheBlock_data()
    {
        columns<QPointF, QVector<int>, QVector<int>>("pos", "before", "after");
        const auto row = [](const char* p_name, const QPointF& p_pos, const QVector<int>& p_before,
                            const QVector<int>& p_after) {
            QTest::newRow(p_name) << p_pos << p_before << p_after;
        };
        row("on all sides", {10, 20}, {50, 60, 50, 60}, {10, 20, 130, 160});
        row("further out they stay", {10, 20}, {0, 0, 500, 600}, {0, 0, 500, 600});
        row("right and bottom alone", {10, 20}, {0, 0, 50, 60}, {0, 0, 130, 160});
        row("reals are rounded", {10.6, 20.4}, {50, 60, 50, 60}, {11, 20, 131, 160});
        row("negative places", {-130.4, -200}, {0, 0, 0, 0}, {-130, -200, 0, 0});
    }

    void extentGrowsTheBoundsOverTheBlock()
    {
        QFETCH(QPointF, pos);
        QFETCH(QVector<int>, before);
        QFETCH(QVector<int>, after);
        plainBlock block;
        block.setPos(pos);
        int left = before.at(0);
        int top = before.at(1);
        int right = before.at(2);
        int bottom = before.at(3);
        const QRect rect = block.extent(left, top, right, bottom);
        QCOMPARE((QVector<int>{left, top, right, bottom}), after);
        QCOMPARE(rect.topLeft(), QPoint(left, top));
        QCOMPARE(rect.bottomRight(), QPoint(right, bottom));
    }

    // Tree.

    void aBlockIsNotItsOwnAncestor()
    {
        supermodule* block = m_trees.root(Forward);
        Trees::behind(block, Stop);
        QVERIFY(!supermodule::isAncestor(block, block));
        QVERIFY(!supermodule::isAncestor(nullptr, block));
        QVERIFY(!supermodule::isAncestor(block, nullptr));
        QVERIFY(!supermodule::isAncestor(nullptr, nullptr));
        QVERIFY(block->containsModule(block));
    }

    void ancestorsAreAllOnTheParentPath()
    {
        supermodule* first = m_trees.root(Forward);
        supermodule* loop = Trees::behind(first, Counted);
        supermodule* inner = Trees::inBody(loop, Endless);
        supermodule* innermost = Trees::inBody(inner, Stop);
        supermodule* last = Trees::behind(loop, Wait);
        supermodule* right = new plainBlock;
        loop->setRightModule(right);
        for (supermodule* block : {loop, inner, innermost, last, right}) {
            QVERIFY(supermodule::isAncestor(first, block));
            QVERIFY(!supermodule::isAncestor(block, first));
            QVERIFY(first->containsModule(block));
        }
        QVERIFY(loop->containsModule(innermost));
        QVERIFY(loop->containsModule(right));
        QVERIFY(!supermodule::isAncestor(inner, last));
        QVERIFY(!inner->containsModule(last));
    }

    void rootAndLastAreTheEndsOfAChain()
    {
        supermodule* first = m_trees.root(Forward);
        supermodule* loop = Trees::behind(first, Counted);
        supermodule* inner = Trees::inBody(loop, Wait);
        supermodule* last = Trees::behind(loop, Stop);
        QCOMPARE(inner->rootOf(), first);
        QCOMPARE(first->rootOf(), first);
        QCOMPARE(first->lastOf(), last);
        QCOMPARE(inner->lastOf(), inner);
    }

    void opacityVisibilityFrameAndHeightGoDownTheWholeTree()
    {
        supermodule* before = m_trees.root(Speed);
        supermodule* first = Trees::behind(before, Counted);
        supermodule* body = Trees::inBody(first, Forward);
        supermodule* right = new plainBlock;
        first->setRightModule(right);
        supermodule* behindRight = Trees::behind(right, Stop);
        supermodule* last = Trees::behind(first, Wait);
        const QList<supermodule*> tree{first, body, right, behindRight, last};
        first->setOpacityTree(true);
        first->setTreeZValue(10);
        first->setSelectTree(true);
        for (supermodule* block : tree) {
            QCOMPARE(block->opacity(), 0.5);
            QCOMPARE(block->zValue(), 10.0);
            QVERIFY(block->selectItem().isVisible());
        }
        QCOMPARE(before->opacity(), 1.0);
        QCOMPARE(before->zValue(), 0.0);
        QVERIFY(!before->selectItem().isVisible());
        first->setOpacityTree(false);
        first->setTreeZValue(0);
        first->setSelectTree(false);
        first->setVisibleTree(false);
        for (supermodule* block : tree) {
            QCOMPARE(block->opacity(), 1.0);
            QCOMPARE(block->zValue(), 0.0);
            QVERIFY(!block->selectItem().isVisible());
            QVERIFY(!block->isVisible());
        }
        QVERIFY(before->isVisible());
        first->setVisibleTree(true);
        for (supermodule* block : tree) {
            QVERIFY(block->isVisible());
        }
    }

    void aChainIsBrightWhenItsRootIsARootOrATask()
    {
        const RootsKept kept;
        supermodule* first = m_trees.root(Speed);
        supermodule* last = Trees::behind(first, Stop);
        rootModules.clear();
        taskModules.clear();
        last->refreshOpacity();
        QCOMPARE(first->opacity(), 0.5);
        QCOMPARE(last->opacity(), 0.5);
        rootModules = {first};
        last->refreshOpacity();
        QCOMPARE(first->opacity(), 1.0);
        QCOMPARE(last->opacity(), 1.0);
        rootModules.clear();
        first->refreshOpacity();
        QCOMPARE(last->opacity(), 0.5);
        taskModules = {first};
        first->refreshOpacity();
        QCOMPARE(last->opacity(), 1.0);
    }

    void aSubProgramBlockHangsUnderARootThatIsNotTheFirst()
    {
        const RootsKept kept;
        supermodule* mainRoot = m_trees.root(Speed);
        supermodule* subRoot = m_trees.root(Forward);
        supermodule* inSub = Trees::behind(subRoot, Stop);
        supermodule* loose = m_trees.root(Wait);
        rootModules = {mainRoot, subRoot};
        QVERIFY(!mainRoot->isSubProgramBlock());
        QVERIFY(subRoot->isSubProgramBlock());
        QVERIFY(inSub->isSubProgramBlock());
        QVERIFY(!loose->isSubProgramBlock());
    }

    void deletingATreeTakesAllOfItOutOfTheScene()
    {
        QGraphicsScene scene;
        supermodule* loop = place(scene, Counted, {0, 0});
        supermodule* body = place(scene, Forward, {0, 0});
        supermodule* behind = place(scene, Stop, {0, 0});
        supermodule* other = place(scene, Wait, {0, 500});
        loop->setLeftModule(body);
        loop->insertModule(behind);
        QList<QPointer<supermodule>> dying{loop, body, behind};
        supermodule::deleteTree(loop);
        for (const QPointer<supermodule>& block : qAsConst(dying)) {
            QVERIFY(!block);
        }
        QVERIFY(scene.items().contains(other));
        for (QGraphicsItem* item : scene.items()) {
            QVERIFY(item == other || item->parentItem() == other);
        }
    }

    void aChainOfAHundredThousandBlocksIsNoDepth()
    {
        const int count = 100000;
        CanvasFixture canvas;
        const RootsKept kept;
        supermodule* first = createModuleFromId(Forward);
        supermodule* last = first;
        for (int i = 1; i < count; ++i) {
            supermodule* module = createModuleFromId(Forward);
            last->appendModule(module);
            last = module;
        }
        last->updateTree();
        QCOMPARE(last->x(), 120.0 * (count - 1));
        QCOMPARE(last->rootOf(), first);
        QCOMPARE(first->lastOf(), last);
        first->setOpacityTree(true);
        QCOMPARE(last->opacity(), 0.5);
        first->setVisibleTree(false);
        QVERIFY(!last->isVisible());
        first->setVisibleTree(true);
        QVERIFY(last->isVisible());
        QVERIFY(first->containsModule(last));
        rootModules = {canvas.main(), first};
        const QString text = canvas.view.generateProjectCode(1);
        QCOMPARE(text.count(QStringLiteral("set_motor(2, -speed2);")), count);
        rootModules = {canvas.main()};
        // The same as the body of a loop.
        supermodule* loop = createModuleFromId(Counted);
        loop->setLeftModule(first);
        QCOMPARE(loop->boundingRect().width(), 120.0 * count + 120 + 40);
        QCOMPARE(loop->cCode().count(QStringLiteral("set_motor(2, -speed2);")), count);
        QPointer<supermodule> end = last;
        supermodule::deleteTree(loop);
        QVERIFY(!end);
        QVERIFY(liveModules.size() < 10);
    }

    // Links.

    void appendingLinksBehindTheLastOfTheChainAndLaysNothingOut()
    {
        supermodule* first = m_trees.root(Speed, {50, 60});
        supermodule* second = Trees::behind(first, Wait);
        supermodule* third = createModuleFromId(Stop);
        third->setPos(7, 8);
        first->appendModule(third);
        QCOMPARE(second->next(), third);
        QCOMPARE(third->parentModule(), second);
        QCOMPARE(third->pos(), QPointF(7, 8));
        third->updateTree();
        QCOMPARE(third->pos(), QPointF(50 + 240, 60));
    }

    void appendingIsLogged()
    {
        supermodule* first = m_trees.root(Speed);
        supermodule* second = createModuleFromId(Wait);
        first->moduleKey = 31;
        second->moduleKey = 32;
        QStringList log;
        s_log = &log;
        QLoggingCategory::setFilterRules(QStringLiteral("default.debug=true"));
        const QtMessageHandler before = qInstallMessageHandler(logMessage);
        first->appendModule(second);
        qInstallMessageHandler(before);
        QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
        s_log = nullptr;
        first->moduleKey = 0;
        QCOMPARE(log.size(), 1);
        const QRegularExpression form(
            QStringLiteral("supermodule::appendModule +p_module +0x[0-9a-f]+ + Id +101 key +32 "
                           "+last +0x[0-9a-f]+ + Id +100 key +31"));
        QVERIFY2(form.match(log.first()).hasMatch(), qPrintable(log.first()));
    }

    void manyYoungBlocksGoAndTheOthersStayAsTheyLie()
    {
        const int count = 4000;
        QGraphicsScene scene;
        scene.setItemIndexMethod(QGraphicsScene::NoIndex);
        const auto chain = [&](int p_type) {
            supermodule* first = nullptr;
            supermodule* last = nullptr;
            for (int i = 0; i < count; ++i) {
                supermodule* module = createModuleFromId(p_type);
                module->enterScene(&scene);
                if (last) {
                    last->hangModule(NextLink, module);
                } else {
                    first = module;
                }
                last = module;
            }
            return first;
        };
        const auto lying = [&] {
            QList<QGraphicsItem*> blocks =
                scene.items(QRectF(-1, -1, 2, 2), Qt::IntersectsItemShape, Qt::AscendingOrder);
            blocks.erase(std::remove_if(
                             blocks.begin(), blocks.end(),
                             [](QGraphicsItem* p_item) { return !supermodule::fromItem(p_item); }),
                         blocks.end());
            return blocks;
        };
        supermodule* old = chain(Wait);
        old->stackBefore(old->next());
        old->next()->setZValue(3);
        const QList<QGraphicsItem*> before = lying();
        QCOMPARE(before.size(), count);
        const int live = liveModules.size();
        const QPointer<supermodule> young = chain(Wait);
        supermodule::deleteTree(young);
        QVERIFY(!young);
        QCOMPARE(liveModules.size(), live);
        QCOMPARE(lying(), before);
        QCOMPARE(scene.itemIndexMethod(), QGraphicsScene::NoIndex);
        // The eldest of two, and all that is left.
        const QPointer<supermodule> other = chain(Stop);
        supermodule::deleteTree(old);
        QVERIFY(other);
        QCOMPARE(lying().size(), count);
        supermodule::deleteTree(other);
        QCOMPARE(scene.items().size(), 0);
    }

    void aLinkIsAskedAndFoundByItsType()
    {
        supermodule* loop = m_trees.root(Counted, {100, 200});
        for (const LinkType type : {NextLink, LeftLink, RightLink}) {
            QCOMPARE(loop->child(type), nullptr);
            supermodule* module = createModuleFromId(Speed);
            loop->insert(type, module);
            QCOMPARE(loop->child(type), module);
            QCOMPARE(loop->linkOf(module), type);
            QCOMPARE(module->parentModule(), loop);
        }
        QCOMPARE(loop->child(NextLink), loop->next());
        QCOMPARE(loop->child(LeftLink), loop->left());
        QCOMPARE(loop->child(RightLink), loop->right());
        QCOMPARE(loop->child(NoLink), nullptr);
        QCOMPARE(loop->linkOf(loop), NoLink);
        QCOMPARE(loop->linkOf(nullptr), NoLink);
        const std::unique_ptr<supermodule> stranger(createModuleFromId(Stop));
        loop->insert(NoLink, stranger.get());
        QCOMPARE(stranger->parentModule(), nullptr);
        QCOMPARE(loop->linkOf(stranger.get()), NoLink);
    }

    void aBlockEntersASceneWithItsConnectorsMovableAndSelectable()
    {
        QGraphicsScene scene;
        auto* bare = new plainBlock;
        bare->enterScene(&scene);
        QCOMPARE(bare->scene(), &scene);
        QVERIFY(bare->hasConnector(NextLink));
        QCOMPARE(bare->flags(), QGraphicsItem::ItemIsMovable | QGraphicsItem::ItemIsSelectable);
        // What the factory has made already is kept.
        supermodule* endless = createModuleFromId(Endless);
        const collisionItem* body = endless->connector(LeftLink);
        endless->enterScene(&scene);
        QCOMPARE(endless->connector(LeftLink), body);
        plainBlock nowhere;
        nowhere.enterScene(nullptr);
        QVERIFY(nowhere.hasConnector(NextLink) && !nowhere.scene());
    }

    void insertingPutsTheOldFollowerBehindTheNewChain_data()
    {
        columns<int, Insert>("type", "insert");
        row<int, Insert>("next", NextLink, &supermodule::insertModule);
        row<int, Insert>("left", LeftLink, &supermodule::setLeftModule);
        row<int, Insert>("right", RightLink, &supermodule::setRightModule);
    }

    void insertingPutsTheOldFollowerBehindTheNewChain()
    {
        QFETCH(int, type);
        QFETCH(Insert, insert);
        supermodule* target = m_trees.root(Counted, {100, 200});
        const auto linked = [&] { return target->child(static_cast<LinkType>(type)); };
        supermodule* old = createModuleFromId(Stop);
        (target->*insert)(old);
        QCOMPARE(linked(), old);
        QCOMPARE(old->parentModule(), target);
        supermodule* head = createModuleFromId(Speed);
        supermodule* tail = Trees::behind(head, Wait);
        (target->*insert)(head);
        QCOMPARE(linked(), head);
        QCOMPARE(head->parentModule(), target);
        QCOMPARE(head->next(), tail);
        QCOMPARE(tail->next(), old);
        QCOMPARE(old->parentModule(), tail);
        if (type != RightLink) {
            // The layout has no rule for right branches.
            QCOMPARE(old->pos(), head->pos() + QPointF(240, 0));
        }
    }

    void nothingFollowsAnEndlessLoopAlsoInABody()
    {
        supermodule* loop = m_trees.root(Counted, {100, 200});
        supermodule* old = Trees::inBody(loop, Forward);
        Trees::behind(old, Stop);
        QCOMPARE(old->pos(), QPointF(220, 200));
        supermodule* endless = createModuleFromId(Endless);
        loop->setLeftModule(endless);
        QCOMPARE(loop->left(), endless);
        QVERIFY(!endless->next());
        QVERIFY(!old->parentModule());
        QCOMPARE(old->pos(), QPointF(220 + 20, 200 + 140 + 20));
        QCOMPARE(old->next()->pos(), old->pos() + QPointF(120, 0));
        QCOMPARE(old->opacity(), 0.5);
        QCOMPARE(old->next()->opacity(), 0.5);
        supermodule::deleteTree(old);
    }

    void removingAChildCutsItsLinkAndClosesNothingElse()
    {
        supermodule* first = m_trees.root(Counted, {100, 200});
        supermodule* body = Trees::inBody(first, Forward);
        supermodule* second = m_trees.root(Wait);
        supermodule* third = Trees::behind(second, Stop);
        first->insertModule(second);
        QCOMPARE(second->pos(), QPointF(100 + 280, 200));
        first->removeChild(body);
        QVERIFY(!first->left());
        QVERIFY(!body->parentModule());
        // Laid out anew: the empty loop is 260 wide.
        QCOMPARE(second->pos(), QPointF(100 + 260, 200));
        first->removeChild(second);
        QVERIFY(!first->next());
        QVERIFY(!second->parentModule());
        QCOMPARE(second->next(), third);
        QCOMPARE(third->parentModule(), second);
        supermodule::deleteTree(body);
    }

    void removingABlockThatIsNoChildChangesNothing()
    {
        supermodule* first = m_trees.root(Speed);
        supermodule* second = Trees::behind(first, Wait);
        supermodule* third = Trees::behind(second, Stop);
        first->removeChild(third);
        first->removeChild(nullptr);
        QCOMPARE(second->next(), third);
        QCOMPARE(third->parentModule(), second);
        QCOMPARE(first->next(), second);
    }

    void theDistanceIsFromMiddleToMiddleRoundedDown()
    {
        supermodule* target = m_trees.root(Speed, {100, 200});
        supermodule* block = m_trees.root(Wait);
        // The connector's middle is at (220, 260), the block's grip 70 under its top.
        block->setPos(223, 260 - 70 + 4);
        QCOMPARE(block->distanceTo(*target->connector(NextLink)), 5);
        // The root of 50 is 7.07, that of 62 is 7.87.
        block->setPos(215, 260 - 70 + 5);
        QCOMPARE(block->distanceTo(*target->connector(NextLink)), 7);
        block->setPos(220 + 6.1, 260 - 70 - 5);
        QCOMPARE(block->distanceTo(*target->connector(NextLink)), 7);
        block->setPos(220, 260 - 70);
        QCOMPARE(block->distanceTo(*target->connector(NextLink)), 0);
    }

    void equalDistancesGoToTheFirstCandidate()
    {
        plainBlock a;
        plainBlock b;
        plainBlock c;
        const QList<LinkCandidate> list{{&a, NextLink, 30}, {&b, LeftLink, 20}, {&c, NextLink, 20}};
        QCOMPARE(bestLinkCandidate(list).m_target.data(), static_cast<supermodule*>(&b));
        QCOMPARE(bestLinkCandidate(list).m_type, static_cast<int>(LeftLink));
    }

    void aDistanceOfTenThousandNeverCounts()
    {
        plainBlock a;
        const LinkCandidate none = bestLinkCandidate({{&a, NextLink, 10000}});
        QVERIFY(!none.m_target);
        QCOMPARE(none.m_type, -1);
        QCOMPARE(none.m_distance, 10000);
        QCOMPARE(bestLinkCandidate({{&a, NextLink, 9999}}).m_target.data(),
                 static_cast<supermodule*>(&a));
        QVERIFY(!bestLinkCandidate({}).m_target);
    }

    void theMainBlockHasNoCandidates()
    {
        CanvasFixture canvas;
        supermodule* loose = canvas.drop(Forward, {400, 400});
        canvas.main()->setPos(loose->x() + 120, loose->y());
        QCOMPARE(collectLinkCandidates(canvas.main(), canvas.main(), canvas.view.preview()).size(),
                 0);
        // A block in the same place has one.
        supermodule* other = place(*canvas.view.scene(), Stop, canvas.main()->pos());
        const QList<LinkCandidate> list =
            collectLinkCandidates(other, canvas.main(), canvas.view.preview());
        QCOMPARE(list.size(), 1);
        QCOMPARE(list.first().m_target.data(), loose);
    }

    void thePreviewIsNoCandidate()
    {
        CanvasFixture canvas;
        FeedbackModule* preview = canvas.view.preview();
        preview->setPos(400, 400);
        preview->show();
        supermodule* other = place(*canvas.view.scene(), Stop, QPointF(520, 400));
        QCOMPARE(collectLinkCandidates(other, canvas.main(), preview).size(), 0);
        const QList<LinkCandidate> taken = collectLinkCandidates(other, canvas.main(), nullptr);
        QCOMPARE(taken.size(), 1);
        QCOMPARE(taken.first().m_target.data(), static_cast<supermodule*>(preview));
        preview->hide();
    }

    void aBlockCanNotBeLinkedToWhatHangsUnderIt()
    {
        // Over a loop's body connector and over its own successor's connector at once.
        QGraphicsScene scene;
        supermodule* loop = place(scene, Counted, {300, 200});
        supermodule* block = place(scene, Forward, {404, 200});
        supermodule* successor = place(scene, Stop, {0, 0});
        block->appendModule(successor);
        successor->setPos(404 - 120, 200);
        QVERIFY(block->collidesWithItem(successor->connector(NextLink)));
        const QList<LinkCandidate> list = collectLinkCandidates(block, nullptr, nullptr);
        QCOMPARE(list.size(), 1);
        QCOMPARE(list.first().m_target.data(), loop);
        QCOMPARE(list.first().m_type, static_cast<int>(LeftLink));
    }

    void anOccupiedConnectorIsACandidate()
    {
        QGraphicsScene scene;
        supermodule* target = place(scene, Speed, {100, 100});
        supermodule* follower = place(scene, Stop, {220, 100});
        target->insertModule(follower);
        supermodule* block = place(scene, Forward, {224, 100});
        const LinkCandidate best =
            bestLinkCandidate(collectLinkCandidates(block, nullptr, nullptr));
        QCOMPARE(best.m_target.data(), target);
        QCOMPARE(best.m_type, static_cast<int>(NextLink));
    }

    // The search that links at once.

    void collisionLinksToTheFirstFreeConnector()
    {
        QGraphicsScene scene;
        supermodule* target = place(scene, Speed, {100, 100});
        supermodule* formerParent = place(scene, Wait, {100, 600});
        supermodule* block = place(scene, Forward, {220, 600});
        formerParent->insertModule(block);
        block->setPos(230, 110);
        supermodule* found = nullptr;
        int type = NoLink;
        QVERIFY(block->CollisionDetection(found, type));
        QCOMPARE(found, target);
        QCOMPARE(type, static_cast<int>(NextLink));
        QCOMPARE(target->next(), block);
        QCOMPARE(block->parentModule(), target);
        QVERIFY(!formerParent->next());
    }

    void collisionLinksABodyAndARightBranch()
    {
        QGraphicsScene scene;
        supermodule* loop = place(scene, Counted, {100, 100});
        supermodule* block = place(scene, Forward, {210, 100});
        supermodule* found = nullptr;
        int type = NoLink;
        QVERIFY(block->CollisionDetection(found, type));
        QCOMPARE(loop->left(), block);
        QCOMPARE(type, static_cast<int>(LeftLink));
        auto* brancher = new plainBlock;
        brancher->makeRightConnector();
        scene.addItem(brancher);
        brancher->setPos(100, 600);
        supermodule* branch = place(scene, Stop, {130, 720});
        QVERIFY(branch->CollisionDetection(found, type));
        QCOMPARE(found, static_cast<supermodule*>(brancher));
        QCOMPARE(brancher->right(), branch);
        QCOMPARE(type, static_cast<int>(RightLink));
    }

    void collisionRefusesAnOccupiedLinkAndDetaches()
    {
        QGraphicsScene scene;
        supermodule* target = place(scene, Speed, {100, 100});
        supermodule* follower = place(scene, Stop, {220, 100});
        target->insertModule(follower);
        follower->setPos(600, 100);
        supermodule* formerParent = place(scene, Wait, {100, 600});
        supermodule* block = place(scene, Forward, {220, 600});
        formerParent->insertModule(block);
        block->setPos(224, 100);
        QVERIFY(block->collidesWithItem(target->connector(NextLink)));
        supermodule* found = nullptr;
        int type = NoLink;
        QVERIFY(!block->CollisionDetection(found, type));
        QVERIFY(!found);
        QCOMPARE(type, static_cast<int>(NoLink));
        QCOMPARE(target->next(), follower);
        QVERIFY(!block->parentModule());
        QVERIFY(!formerParent->next());
    }

    void collisionKeepsAChildWhereItIs()
    {
        QGraphicsScene scene;
        supermodule* target = place(scene, Speed, {100, 100});
        supermodule* block = place(scene, Stop, {220, 100});
        target->insertModule(block);
        supermodule* found = nullptr;
        int type = NoLink;
        QVERIFY(block->CollisionDetection(found, type));
        QVERIFY(!found);
        QCOMPARE(type, static_cast<int>(NoLink));
        QCOMPARE(target->next(), block);
        QCOMPARE(block->parentModule(), target);
    }

    void collisionMovesAChildToAnotherLinkOfItsParent()
    {
        QGraphicsScene scene;
        supermodule* loop = place(scene, Counted, {100, 100});
        supermodule* block = place(scene, Stop, {0, 0});
        loop->insertModule(block);
        block->setPos(210, 100);
        supermodule* found = nullptr;
        int type = NoLink;
        QVERIFY(block->CollisionDetection(found, type));
        QCOMPARE(found, loop);
        QCOMPARE(type, static_cast<int>(LeftLink));
        QCOMPARE(loop->left(), block);
        QVERIFY(!loop->next());
    }

    void collisionSkipsWhatHangsUnderTheBlock()
    {
        QGraphicsScene scene;
        supermodule* block = place(scene, Forward, {100, 100});
        supermodule* follower = place(scene, Stop, {0, 0});
        block->appendModule(follower);
        follower->setPos(-20, 100);
        QVERIFY(block->collidesWithItem(follower->connector(NextLink)));
        supermodule* found = nullptr;
        int type = NoLink;
        QVERIFY(!block->CollisionDetection(found, type));
        QVERIFY(!follower->next());
        QVERIFY(!block->parentModule());
    }

    // Drops and drags on the canvas.

    void dropOnTheNextConnectorOfABlockWithASuccessorGoesBetween()
    {
        CanvasFixture canvas;
        supermodule* first = dropOn(canvas, canvas.main(), NextLink, Speed);
        supermodule* successor = dropOn(canvas, first, NextLink, Stop);
        supermodule* between = dropOn(canvas, first, NextLink, Forward);
        QCOMPARE(CanvasFixture::ids(canvas.main()), (QList<int>{0, Speed, Forward, Stop}));
        QCOMPARE(first->next(), between);
        QCOMPARE(between->next(), successor);
        QCOMPARE(between->pos(), QPointF(100 + 140 + 120, 200));
        QCOMPARE(successor->pos(), QPointF(100 + 140 + 240, 200));
        QCOMPARE(canvas.brokenInvariants(), QStringList());
    }

    void droppedChainWithAnEndlessLoopLeavesTheOldTailLoose()
    {
        CanvasFixture canvas;
        supermodule* first = dropOn(canvas, canvas.main(), NextLink, Speed);
        supermodule* oldTail = dropOn(canvas, first, NextLink, Stop);
        supermodule* behindTail = dropOn(canvas, oldTail, NextLink, Wait);
        const QPointF oldPlace = oldTail->pos();
        QCOMPARE(oldPlace, QPointF(360, 200));
        supermodule* head = canvas.drop(Forward, {120, 420});
        supermodule* endless = dropOn(canvas, head, NextLink, Endless);
        QCOMPARE(CanvasFixture::ids(head), (QList<int>{Forward, Endless}));
        dragTo(canvas, head, first, NextLink);
        QCOMPARE(CanvasFixture::ids(canvas.main()), (QList<int>{0, Speed, Forward, Endless}));
        QVERIFY(!endless->next());
        QVERIFY(!oldTail->parentModule());
        QCOMPARE(oldTail->next(), behindTail);
        QCOMPARE(oldTail->pos(), oldPlace + QPointF(20, 160));
        QCOMPARE(oldTail->opacity(), 0.5);
        QCOMPARE(behindTail->opacity(), 0.5);
        QCOMPARE(canvas.brokenInvariants(), QStringList());
    }

    void droppedLoopKeepsItsBodyAndTheOldTailGoesBehindIt()
    {
        CanvasFixture canvas;
        supermodule* oldTail = dropOn(canvas, canvas.main(), NextLink, Stop);
        supermodule* loop = canvas.drop(Counted, {300, 420});
        supermodule* body = dropOn(canvas, loop, LeftLink, Forward);
        QCOMPARE(loop->left(), body);
        dragTo(canvas, loop, canvas.main(), NextLink);
        QCOMPARE(CanvasFixture::ids(canvas.main()), (QList<int>{0, Counted, Stop}));
        QCOMPARE(CanvasFixture::ids(loop->left()), QList<int>{Forward});
        QCOMPARE(loop->next(), oldTail);
        QCOMPARE(oldTail->pos(), QPointF(100 + 140 + 280, 200));
        QCOMPARE(canvas.brokenInvariants(), QStringList());
    }

    void dropBetweenTwoEquallyNearConnectorsTakesTheFirstListed_data()
    {
        QTest::addColumn<bool>("upperIsNewer");
        QTest::newRow("the upper one is newer") << true;
        QTest::newRow("the lower one is newer") << false;
    }

    void dropBetweenTwoEquallyNearConnectorsTakesTheFirstListed()
    {
        QFETCH(bool, upperIsNewer);
        CanvasFixture canvas;
        canvas.main()->setPos(100, 30);
        supermodule* older = canvas.drop(Speed, {360, 280});
        supermodule* newer = canvas.drop(Wait, {360, 440});
        supermodule* upper = upperIsNewer ? newer : older;
        supermodule* lower = upperIsNewer ? older : newer;
        upper->setPos(300, 280);
        lower->setPos(300, 320);
        QVERIFY(!upper->parentModule() && !lower->parentModule());
        // The connectors' middles are 40 apart; the grip stands between them.
        const QPointF grip = upper->pos() + QPointF(120, 60 + 20);
        const QPointF at = grip - QPointF(0, 70) + QPointF(60, 0);
        canvas.dragOver(Forward, at);
        supermodule* dragged = canvas.view.currentModule();
        QCOMPARE(dragged->distanceTo(*upper->connector(NextLink)), 20);
        QCOMPARE(dragged->distanceTo(*lower->connector(NextLink)), 20);
        canvas.leave();
        supermodule* dropped = canvas.drop(Forward, at);
        // In descending stacking order the newer one comes first.
        QCOMPARE(dropped->parentModule(), newer);
        QVERIFY(!older->next());
    }

    void draggedLoopCanNotGoIntoItsOwnBody()
    {
        CanvasFixture canvas;
        supermodule* loop = canvas.drop(Counted, {300, 400});
        supermodule* inner = dropOn(canvas, loop, LeftLink, Counted);
        supermodule* follower = dropOn(canvas, loop, NextLink, Stop);
        QCOMPARE(loop->left(), inner);
        QCOMPARE(loop->next(), follower);
        // Wherever it goes, the connectors of its body lie in its own shape.
        QVERIFY(loop->collidesWithItem(inner->connector(LeftLink)));
        canvas.drag(loop, QPoint(60, 30));
        QVERIFY(!loop->parentModule());
        QCOMPARE(loop->left(), inner);
        QVERIFY(!inner->left());
        QCOMPARE(loop->next(), follower);
        QCOMPARE(canvas.brokenInvariants(), QStringList());
    }

    void dropOnTheBodyConnectorOfALoopWithABodyGoesFirst()
    {
        CanvasFixture canvas;
        supermodule* loop = dropOn(canvas, canvas.main(), NextLink, Counted);
        supermodule* oldBody = dropOn(canvas, loop, LeftLink, Stop);
        supermodule* newBody = dropOn(canvas, loop, LeftLink, Forward);
        QCOMPARE(loop->left(), newBody);
        QCOMPARE(newBody->next(), oldBody);
        QCOMPARE(CanvasFixture::ids(loop->left()), (QList<int>{Forward, Stop}));
        QCOMPARE(newBody->pos(), loop->pos() + QPointF(120, 0));
        QCOMPARE(oldBody->pos(), loop->pos() + QPointF(240, 0));
        QCOMPARE(canvas.brokenInvariants(), QStringList());
    }

    void draggedMainBlockNeverJoinsAnything()
    {
        CanvasFixture canvas;
        supermodule* loose = canvas.drop(Forward, {460, 400});
        supermodule* follower = dropOn(canvas, canvas.main(), NextLink, Stop);
        dragTo(canvas, canvas.main(), loose, NextLink);
        QCOMPARE(canvas.main()->pos(), loose->pos() + QPointF(124, 0));
        QVERIFY(!canvas.main()->parentModule());
        QVERIFY(!loose->next());
        QCOMPARE(canvas.main()->next(), follower);
        QCOMPARE(canvas.brokenInvariants(), QStringList());
    }

    void draggedTreeStandsAboveTheOthersUntilItIsReleased()
    {
        CanvasFixture canvas;
        supermodule* first = dropOn(canvas, canvas.main(), NextLink, Speed);
        supermodule* loop = canvas.drop(Counted, {300, 400});
        supermodule* body = dropOn(canvas, loop, LeftLink, Forward);
        supermodule* follower = dropOn(canvas, loop, NextLink, Stop);
        const QPointF from = loop->scenePos() + QPointF(30, 30);
        canvas.press(from);
        canvas.move(from + QPointF(5, 10));
        QVERIFY(loop->m_moved);
        for (const supermodule* block : {loop, body, follower}) {
            QCOMPARE(block->zValue(), 10.0);
        }
        QCOMPARE(first->zValue(), 0.0);
        canvas.release(from + QPointF(5, 10));
        QVERIFY(!loop->m_moved);
        for (const supermodule* block : {loop, body, follower}) {
            QCOMPARE(block->zValue(), 0.0);
        }
    }

    // Layout.

    void aNewLoopHasItsRectangleBeforeTheFirstLayout_data()
    {
        numberRows("id", {Counted, Endless, UntilInfrared, UntilTouch});
    }

    void aNewLoopHasItsRectangleBeforeTheFirstLayout()
    {
        QFETCH(int, id);
        QCOMPARE(m_trees.root(id)->boundingRect(), QRectF(0, -20, 280, 140));
    }

    void blocksStandSideBySideWithoutAGap()
    {
        CanvasFixture canvas;
        supermodule* first = dropOn(canvas, canvas.main(), NextLink, Speed);
        supermodule* second = dropOn(canvas, first, NextLink, Forward);
        QCOMPARE(first->pos(), canvas.main()->pos() + QPointF(140, 0));
        QCOMPARE(second->pos(), first->pos() + QPointF(120, 0));
        // The root decides where the others stand, at the next layout.
        canvas.main()->setPos(150, 250);
        QCOMPARE(second->pos(), QPointF(360, 200));
        second->updateTree();
        QCOMPARE(second->pos(), QPointF(150 + 140 + 120, 250));
    }

    void anEmptyLoopIs260Wide_data()
    {
        columns<int, QRectF>("id", "rect");
        QTest::newRow("counted") << int(Counted) << QRectF(0, -20, 260, 140);
        QTest::newRow("endless") << int(Endless) << QRectF(0, -20, 260, 140);
        QTest::newRow("until infrared") << int(UntilInfrared) << QRectF(0, -20, 260, 100);
        QTest::newRow("until touch") << int(UntilTouch) << QRectF(0, -20, 260, 100);
    }

    void anEmptyLoopIs260Wide()
    {
        QFETCH(int, id);
        QFETCH(QRectF, rect);
        supermodule* loop = m_trees.root(id, {100, 200});
        loop->updateTree();
        QCOMPARE(loop->boundingRect(), rect);
        if (id != Endless) {
            QCOMPARE(loop->connector(NextLink)->pos(), QPointF(260, 30));
            QCOMPARE(Trees::behind(loop, Stop)->pos(), QPointF(360, 200));
        }
    }

    void aLoopGrowsWithItsBody_data()
    {
        columns<int, int, int, int>("id", "blocks", "offset", "width");
        // The body's offset, 120 for each block, and 40 past them.
        QTest::newRow("counted, one") << int(Counted) << 1 << 120 << 280;
        QTest::newRow("counted, three") << int(Counted) << 3 << 120 << 520;
        QTest::newRow("endless, two") << int(Endless) << 2 << 120 << 400;
        QTest::newRow("until infrared, one") << int(UntilInfrared) << 1 << 40 << 200;
        QTest::newRow("until touch, two") << int(UntilTouch) << 2 << 40 << 320;
    }

    void aLoopGrowsWithItsBody()
    {
        QFETCH(int, id);
        QFETCH(int, blocks);
        QFETCH(int, offset);
        QFETCH(int, width);
        supermodule* loop = m_trees.root(id, {100, 200});
        for (int i = 0; i < blocks; ++i) {
            Trees::inBody(loop, Forward);
        }
        loop->updateTree();
        QCOMPARE(loop->left()->pos(), QPointF(100 + offset, 200));
        QCOMPARE(loop->left()->lastOf()->pos(), QPointF(100 + offset + 120 * (blocks - 1), 200));
        // 20 above the body's top, and as deep as a block.
        QCOMPARE(loop->boundingRect(), QRectF(0, -20, width, 160));
        if (id != Endless) {
            QCOMPARE(loop->connector(NextLink)->pos(), QPointF(width, 30));
            QCOMPARE(Trees::behind(loop, Stop)->pos(), QPointF(100 + width, 200));
        }
    }

    void aNestedLoopMakesTheOuterOne40WiderAnd20Higher()
    {
        supermodule* outer = m_trees.root(Counted, {100, 200});
        supermodule* inner = Trees::inBody(outer, UntilTouch);
        Trees::inBody(inner, Forward);
        outer->updateTree();
        QCOMPARE(inner->pos(), QPointF(220, 200));
        QCOMPARE(inner->boundingRect(), QRectF(0, -20, 200, 160));
        // From 100 to 40 past the inner one's end at 220 + 200, and 20 above its top.
        QCOMPARE(outer->boundingRect(), QRectF(0, -40, 120 + 200 + 40, 180));
    }

    void topsOfEmptyLoopsSideBySideAddUp()
    {
        supermodule* outer = m_trees.root(Counted, {100, 200});
        supermodule* first = Trees::inBody(outer, Counted);
        supermodule* second = Trees::inBody(outer, Counted);
        outer->updateTree();
        QCOMPARE(first->pos(), QPointF(220, 200));
        QCOMPARE(second->pos(), QPointF(480, 200));
        // 20 for each of the three, as each starts from the bound that the one before has left.
        QCOMPARE(outer->boundingRect().top(), -60.0);
        QCOMPARE(outer->boundingRect(), QRectF(0, -60, 120 + 260 + 260 + 40, 200));
    }

    void topsOfNestedEmptyLoopsAddUp()
    {
        supermodule* outer = m_trees.root(Counted, {100, 200});
        supermodule* middle = Trees::inBody(outer, UntilInfrared);
        supermodule* inner = Trees::inBody(middle, Endless);
        outer->updateTree();
        QCOMPARE(inner->pos(), QPointF(100 + 120 + 40, 200));
        QCOMPARE(inner->boundingRect(), QRectF(0, -20, 260, 140));
        QCOMPARE(middle->boundingRect(), QRectF(0, -40, 40 + 260 + 40, 180));
        QCOMPARE(outer->boundingRect(), QRectF(0, -60, 120 + 340 + 40, 200));
    }

    void loopsAreLaidOutWhereverTheyStand()
    {
        supermodule* loop = m_trees.root(Counted, {-500, -300});
        Trees::inBody(loop, Forward);
        loop->updateTree();
        QCOMPARE(loop->boundingRect(), QRectF(0, -20, 280, 160));
        loop->setPos(9000, 9000);
        loop->updateTree();
        QCOMPARE(loop->boundingRect(), QRectF(0, -20, 280, 160));
        QCOMPARE(loop->left()->pos(), QPointF(9120, 9000));
    }

    void blockPutIntoAnEmptyLoopMovesTheRestFrom260Up()
    {
        CanvasFixture canvas;
        supermodule* loop = dropOn(canvas, canvas.main(), NextLink, Counted);
        supermodule* follower = dropOn(canvas, loop, NextLink, Stop);
        QCOMPARE(follower->parentModule(), loop);
        QCOMPARE(follower->pos(), loop->pos() + QPointF(260, 0));
        supermodule* body = dropOn(canvas, loop, LeftLink, Forward);
        QCOMPARE(loop->left(), body);
        QCOMPARE(body->pos(), loop->pos() + QPointF(120, 0));
        QCOMPARE(loop->boundingRect().width(), 280.0);
        QCOMPARE(follower->pos(), loop->pos() + QPointF(280, 0));
    }

    void deletingTheLastBlockOfABodyRestoresTheWidth()
    {
        CanvasFixture canvas;
        supermodule* loop = dropOn(canvas, canvas.main(), NextLink, Counted);
        supermodule* follower = dropOn(canvas, loop, NextLink, Stop);
        supermodule* body = dropOn(canvas, loop, LeftLink, Forward);
        dropOn(canvas, body, NextLink, Wait);
        QCOMPARE(follower->pos(), loop->pos() + QPointF(400, 0));
        canvas.click(body->scenePos() + QPointF(30, 30));
        canvas.key(Qt::Key_Delete);
        QVERIFY(!loop->left());
        QCOMPARE(loop->boundingRect(), QRectF(0, -20, 260, 140));
        QCOMPARE(follower->pos(), loop->pos() + QPointF(260, 0));
        QCOMPARE(canvas.brokenInvariants(), QStringList());
    }

    void endlessLoopHasNoNextConnectorToMove()
    {
        CanvasFixture canvas;
        supermodule* loop = dropOn(canvas, canvas.main(), NextLink, Endless);
        QVERIFY(!loop->hasConnector(NextLink));
        QVERIFY(!loop->connector(NextLink));
        dropOn(canvas, loop, LeftLink, Forward);
        QCOMPARE(loop->boundingRect(), QRectF(0, -20, 280, 160));
        QVERIFY(!loop->connector(NextLink));
        // A block dropped at its end, past the last connector of its body, touches nothing to
        // follow.
        supermodule* behind = canvas.drop(Stop, loop->pos() + QPointF(120 + 120 + 60 + 4 + 60, 0));
        QVERIFY(!behind->parentModule());
        QVERIFY(!loop->next());
    }

private:
    Trees m_trees;
};

int main(int p_argc, char** p_argv)
{
    QApplication application(p_argc, p_argv);
    if (p_argc == 2 && qstrcmp(p_argv[1], s_unknownBlock) == 0) {
        createModuleFromId(99);
        qCritical("gone on");
        return 0;
    }
    BlockEngineTest test;
    return QTest::qExec(&test, p_argc, p_argv);
}

#include "blockenginetest.moc"
