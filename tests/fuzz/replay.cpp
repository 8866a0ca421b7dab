#include "fuzztarget.h"

#include <QDir>
#include <QFile>

#include <cstdio>

/*
 * Stands in for the fuzzer where there is none: runs a harness over each file of the folders that
 * it is given, and over an empty input. A fault ends the program, with the file's name said last.
 */
int main(int p_argc, char** p_argv)
{
    QStringList folders;
    for (int i = 1; i < p_argc; ++i) {
        folders.append(QFile::decodeName(p_argv[i]));
    }
    LLVMFuzzerInitialize(&p_argc, &p_argv);
    LLVMFuzzerTestOneInput(nullptr, 0);
    int files = 0;
    for (const QString& folder : qAsConst(folders)) {
        const QFileInfoList entries = QDir(folder).entryInfoList(QDir::Files, QDir::Name);
        for (const QFileInfo& entry : entries) {
            QFile file(entry.filePath());
            if (!file.open(QIODevice::ReadOnly)) {
                std::fprintf(stderr, "%s can't be read\n", qPrintable(entry.filePath()));
                return 1;
            }
            std::fprintf(stderr, "%s\n", qPrintable(entry.filePath()));
            const QByteArray input = file.readAll();
            LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(input.constData()),
                                   static_cast<size_t>(input.size()));
            ++files;
        }
    }
    std::fprintf(stderr, "%d files replayed\n", files);
    return files > 0 ? 0 : 1;
}
