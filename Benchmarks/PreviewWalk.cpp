// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <QApplication>
#include <QElapsedTimer>
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "Benchmarks/MeasuredApplication.h"
#include "Quirebind/Preview/PDFPreview.h"
#include "Quirebind/Preview/RenderService.h"

// Selects every document below a folder, one after the other, in one preview, and says how long the
// first page took to show and how long the main thread was ever busy without looking at events.
//
//     preview-walk FOLDER

using quirebind::benchmarks::MeasuredApplication;
using quirebind::benchmarks::milliseconds;

namespace {

constexpr int kMostMilliseconds = 15'000;  // for one document

std::vector<std::string> documentsBelow(const char* folder) {
    std::vector<std::string> paths;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder))
        if (entry.is_regular_file() && entry.path().extension() == ".pdf")
            paths.push_back(entry.path().string());
    std::ranges::sort(paths);
    return paths;
}

double percentile(std::vector<double>& values, double share) {
    if (values.empty()) return 0;
    std::ranges::sort(values);
    return values[static_cast<std::size_t>(share * static_cast<double>(values.size() - 1))];
}

}  // namespace

int main(int argc, char* argv[]) {
    MeasuredApplication application(argc, argv);
    if (argc != 2) {
        std::fputs("usage: preview-walk FOLDER\n", stderr);
        return 2;
    }
    quirebind::RenderService service(QUIREBIND_RENDERER);
    service.warmUp();
    quirebind::PDFPreview preview(service);
    preview.resize(580, 470);
    preview.show();

    std::vector<double> opening;
    std::vector<double> showing;
    std::size_t refused = 0;
    std::size_t late = 0;
    double longestStall = 0;
    const std::vector<std::string> paths = documentsBelow(argv[1]);
    for (const std::string& path : paths) {
        application.longest = 0;
        QElapsedTimer timer;
        timer.start();
        preview.setURL(quirebind::URL::file(path));
        opening.push_back(milliseconds(timer));
        if (preview.pageCount() == 0) ++refused;
        while (!preview.isSharp() && milliseconds(timer) < kMostMilliseconds)
            QApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
        if (!preview.isSharp()) ++late;
        if (preview.pageCount() > 0) showing.push_back(milliseconds(timer));
        const double stall = std::max(application.longest, opening.back());
        longestStall = std::max(longestStall, stall);
        if (stall > 50 || milliseconds(timer) > 1000)
            std::printf("%s: opened in %.0f ms, shown after %.0f ms, stall %.0f ms\n", path.c_str(),
                        opening.back(), milliseconds(timer), stall);
    }
    std::printf("%zu documents, %zu not shown, %zu never finished\n", paths.size(), refused, late);
    std::printf("opening: median %.2f ms, 99 %% %.2f ms\n", percentile(opening, 0.5),
                percentile(opening, 0.99));
    std::printf("first page: median %.1f ms, 95 %% %.1f ms, 99 %% %.1f ms\n",
                percentile(showing, 0.5), percentile(showing, 0.95), percentile(showing, 0.99));
    std::printf("longest stall of the main thread: %.1f ms\n", longestStall);
    return 0;
}
