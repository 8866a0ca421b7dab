#include "canvas/tzprogramview.h"
#include "fuzztarget.h"
#include "modules/documentstate.h"
#include "modules/mainmodule.h"
#include "project/programnameholder.h"
#include "project/projectfile.h"
#include "support/canvas/documentinvariants.h"

#include <QApplication>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>

/*
 * The whole way of a project file: bytes, XML, check tag, blocks in the scene of a canvas, the
 * generated text. Whatever opens must be a document in order, and must come back unchanged from
 * a save. An input is a file's XML; when it ends in a line feed, as what Tiler writes does, action
 * data stands behind it.
 */

namespace
{
class NameHolder : public ProgramNameHolder
{
public:
    QString programName() const override { return m_name; }
    void setProgramName(const QString& p_name) override { m_name = p_name; }

private:
    QString m_name;
};

const QByteArray s_tail(ProjectTailSize, '\xa5');

struct Bench {
    Bench() : document(new Document), view(new TzProgramView(*document))
    {
        fuzzCheck(folder.isValid(), "there is no folder to work in");
        document->setProgramNameHolder(&name);
        view->newProgram();
        view->resetDocument();
    }
    QString path(const char* p_name) const { return folder.filePath(QLatin1String(p_name)); }

    QTemporaryDir folder;
    NameHolder name;
    // Never deleted: they would outlive the application object. Pointers to them stay.
    Document* document;
    TzProgramView* view;
};

Bench& bench()
{
    static Bench s_bench;
    return s_bench;
}

/** False for a name with letters that a file may lose: halves of pairs, and what is no letter. */
bool isOrdinary(const QString& p_name)
{
    return std::none_of(p_name.begin(), p_name.end(), [](QChar p_letter) {
        return p_letter.isSurrogate() || p_letter.unicode() >= 0xfffe;
    });
}

QByteArray read(const QString& p_path)
{
    QFile file(p_path);
    fuzzCheck(file.open(QIODevice::ReadOnly), "a file can't be read");
    return file.readAll();
}

void checkDocument(const Bench& p_bench, const char* p_when)
{
    const QStringList broken = brokenInvariants(*p_bench.view);
    if (!broken.isEmpty()) {
        const QByteArray all = broken.join(QLatin1String("; ")).toUtf8();
        fuzzCheck(false, (QByteArray(p_when) + ": " + all).constData());
    }
}

/** Saves the document, opens it again and sees that it is the same. */
void checkRoundTrip(Bench& p_bench)
{
    TzProgramView& view = *p_bench.view;
    const QString text = view.generateProjectCode(1);
    const QString name = p_bench.name.programName();
    const int blocks = canvasBlocks(view).size();

    fuzzCheck(view.saveFile(p_bench.path("first.tlrx"), s_tail), "the project can't be saved");
    fuzzCheck(view.openFile(p_bench.path("first.tlrx")) == ProjectOpened,
              "a saved project doesn't open");
    checkDocument(p_bench, "saved and opened");
    fuzzCheck(canvasBlocks(view).size() == blocks, "a saved project has other blocks");
    fuzzCheck(!isOrdinary(name) || p_bench.name.programName() == name,
              "a saved project has another name");
    fuzzCheck(view.generateProjectCode(1) == text, "a saved project gives another text");

    fuzzCheck(view.saveFile(p_bench.path("second.tlrx"), s_tail), "it can't be saved again");
    fuzzCheck(storedChains(read(p_bench.path("second.tlrx"))) ==
                  storedChains(read(p_bench.path("first.tlrx"))),
              "a saved project changes when it is saved again");
}
} // namespace

int LLVMFuzzerInitialize(int* p_argc, char*** p_argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // One input, one result.
    qSetGlobalQHashSeed(0);
    // Never deleted either.
    static const auto* const s_application = new QApplication(*p_argc, *p_argv);
    Q_UNUSED(s_application)
    bench();
    return 0;
}

int LLVMFuzzerTestOneInput(const uint8_t* p_data, size_t p_size)
{
    Bench& used = bench();
    TzProgramView& view = *used.view;
    const QByteArray input(reinterpret_cast<const char*>(p_data), static_cast<int>(p_size));

    QFile file(used.path("input.tlrx"));
    fuzzCheck(file.open(QIODevice::WriteOnly), "the input can't be written");
    file.write(input);
    if (input.endsWith('\n')) {
        file.write(s_tail);
    }
    file.close();

    view.mainBlock()->setPos(50, 180);
    used.name.setProgramName(QStringLiteral("RunA"));
    if (view.openFile(file.fileName()) == ProjectOpened) {
        checkDocument(used, "opened");
        checkRoundTrip(used);
    } else {
        fuzzCheck(view.mainBlock()->pos() == QPointF(50, 180) &&
                      used.name.programName() == QLatin1String("RunA"),
                  "a file that is refused changes something");
    }

    view.newProgram();
    view.resetDocument();
    fuzzCheck(canvasBlocks(view) == QList<supermodule*>{view.mainBlock()} && moduleMap.isEmpty() &&
                  !view.mainBlock()->next(),
              "a block outlives its document");
    QCoreApplication::sendPostedEvents();
    return 0;
}
