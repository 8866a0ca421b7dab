#include "programoutline.h"

#include "modules/supermodule.h"
#include "support/canvas/blockdata.h"
#include "support/canvas/documentinvariants.h"

namespace
{
template <class Tell> QString outlineOf(const supermodule* p_first, Tell p_tell)
{
    QStringList blocks;
    for (const supermodule* module = p_first; module; module = module->next()) {
        QString block = p_tell(module);
        if (module->left()) {
            block += QStringLiteral(" [ %1 ]").arg(outlineOf(module->left(), p_tell));
        }
        if (module->right()) {
            block += QStringLiteral(" right [ %1 ]").arg(outlineOf(module->right(), p_tell));
        }
        blocks << block;
    }
    return blocks.join(QStringLiteral(" > "));
}

QString inBraces(const BlockAttributes& p_attributes)
{
    const QString text = joinedAttributes(p_attributes);
    return text.isEmpty() ? text : QLatin1Char('{') + text + QLatin1Char('}');
}

QString withKey(int p_type, int p_key) { return QStringLiteral("%1#%2").arg(p_type).arg(p_key); }

QString told(const supermodule* p_module, Telling p_telling)
{
    if (p_telling == Telling::Keys) {
        return withKey(p_module->id, p_module->registryKey());
    }
    if (p_telling == Telling::Parameters) {
        return QString::number(p_module->id) + inBraces(ownAttributes(p_module));
    }
    return withKey(p_module->id, p_module->registryKey()) + inBraces(ownAttributes(p_module)) +
           QStringLiteral("(%1 %2 key %3 slot %4 opacity %5 seen %6)")
               .arg(p_module->scenePos().x())
               .arg(p_module->scenePos().y())
               .arg(p_module->moduleKey)
               .arg(p_module->ownid)
               .arg(p_module->opacity())
               .arg(p_module->isVisible() ? 1 : 0);
}
} // namespace

BlockAttributes copiedParameters(int p_type, BlockAttributes p_parameters)
{
    const QString n = QStringLiteral("n");
    switch (p_type) {
    case 117:
        p_parameters[n] = QStringLiteral("2");
        break;
    case 306:
    case 307:
    case 308:
    case 309:
        p_parameters[QStringLiteral("bInfread")] = QStringLiteral("1");
        break;
    case 900:
    case 902:
    case 905:
    case 906:
        p_parameters[n] = QStringLiteral("0");
        break;
    case 903:
        p_parameters[n] = QStringLiteral("1");
        break;
    default:
        break;
    }
    return p_parameters;
}

QString chainOutline(const supermodule* p_first, Telling p_telling)
{
    return outlineOf(p_first,
                     [p_telling](const supermodule* p_each) { return told(p_each, p_telling); });
}

QString copyOutline(const supermodule* p_first)
{
    return outlineOf(p_first, [](const supermodule* p_each) {
        return QString::number(p_each->id) +
               inBraces(copiedParameters(p_each->id, ownAttributes(p_each)));
    });
}

QStringList documentOutline(const TzProgramView& p_view, Telling p_telling)
{
    QStringList lines;
    const QList<supermodule*> blocks = canvasBlocks(p_view);
    for (const supermodule* block : blocks) {
        if (!block->parentModule()) {
            lines << chainOutline(block, p_telling);
        }
    }
    lines.sort();
    return lines;
}

bool ProgramModel::isLoop(int p_type) { return loopTypes().contains(p_type); }

void ProgramModel::add(int p_type, int p_key) { m_blocks[p_key].type = p_type; }

void ProgramModel::link(int p_key, int p_target, LinkType p_link)
{
    Block& target = m_blocks[p_target];
    int& place = p_link == LeftLink ? target.body : target.next;
    const int before = place;
    place = p_key;
    m_blocks[p_key].parent = p_target;
    if (before == 0) {
        return;
    }
    // What stood here goes on behind the block, but nothing follows an endless loop.
    const bool follows =
        blockDataOf(m_blocks[p_key].type)->value("shape") != QLatin1String("endless");
    m_blocks[before].parent = follows ? p_key : 0;
    if (follows) {
        m_blocks[p_key].next = before;
    }
}

int ProgramModel::depth(int p_key) const
{
    int depth = 0;
    for (int key = p_key, parent = m_blocks[key].parent; parent != 0;
         key = parent, parent = m_blocks[key].parent) {
        if (m_blocks[parent].body == key) {
            ++depth;
        }
    }
    return depth;
}

QString ProgramModel::chain(int p_first) const
{
    QStringList blocks;
    for (int key = p_first; key != 0; key = m_blocks[key].next) {
        const Block block = m_blocks[key];
        blocks << withKey(block.type, key) + (block.body != 0
                                                  ? QStringLiteral(" [ %1 ]").arg(chain(block.body))
                                                  : QString());
    }
    return blocks.join(QStringLiteral(" > "));
}

QStringList ProgramModel::outline() const
{
    QStringList lines;
    for (auto it = m_blocks.constBegin(); it != m_blocks.constEnd(); ++it) {
        if (it->parent == 0) {
            lines << chain(it.key());
        }
    }
    lines.sort();
    return lines;
}
