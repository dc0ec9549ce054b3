// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <QApplication>

#include "Quirebind/QuirebindApp.h"
#include "QuirebindCore/PDFMerger.h"

int main(int argc, char* argv[]) {
    const QApplication application(argc, argv);
    const quirebind::QuirebindApp app(quirebind::PDFMerger::merge);
    return QApplication::exec();
}
