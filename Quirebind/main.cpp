// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <QApplication>
#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QStringList>
#include <cstdio>
#include <span>

#include "Quirebind/QuirebindApp.h"
#include "QuirebindCore/PDFMerger.h"

namespace {

/// Prints what is asked for by an option, which needs neither a window nor a display. False where
/// nothing is; whatever else is there is for the toolkit, or means nothing.
bool answers(std::span<char*> words) {
    QStringList arguments;
    for (const char* word : words) arguments << QString::fromLocal8Bit(word);
    // The toolkit's own words.
    const auto described = [](const char* text) {
        return QCoreApplication::translate("QCommandLineParser", text);
    };
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")},
                                  described("Displays help on commandline options."));
    const QCommandLineOption version({QStringLiteral("v"), QStringLiteral("version")},
                                     described("Displays version information."));
    QCommandLineParser parser;
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);  // as the toolkit's
    parser.addOptions({help, version});
    parser.parse(arguments);  // false for those of the toolkit
    if (!parser.isSet(help) && !parser.isSet(version)) return false;
    auto count = static_cast<int>(words.size());
    const QCoreApplication application(count, words.data());  // which the text names
    const QString text = parser.isSet(help) ? parser.helpText()
                                            : QStringLiteral("Quirebind " QUIREBIND_VERSION "\n");
    std::fputs(qUtf8Printable(text), stdout);
    return true;
}

}  // namespace

int main(int argc, char* argv[]) {
    if (answers(std::span(argv, static_cast<std::size_t>(argc)))) return 0;
    const QApplication application(argc, argv);
    const quirebind::QuirebindApp app(quirebind::PDFMerger::merge);
    return QApplication::exec();
}
