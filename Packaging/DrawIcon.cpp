// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Draws an icon while the project is built, with the library that draws it in the window:
//
//     draw-icon SVG PIXELS PNG [UNITS]
//
// With UNITS, only the middle of the drawing, so many of its units wide and high: a drawing whose
// edges lie on whole pixels would be blurred if it were scaled a little.

#include <QImage>
#include <QPainter>
#include <QString>
#include <QSvgRenderer>
#include <cstdio>
#include <cstdlib>

namespace {

bool draw(const QString& svg, int pixels, const QString& png, double units) {
    QSvgRenderer drawing(svg);
    if (!drawing.isValid() || pixels <= 0) return false;
    if (units > 0) {
        const double margin = (drawing.viewBoxF().width() - units) / 2;
        drawing.setViewBox(drawing.viewBoxF().adjusted(margin, margin, -margin, -margin));
    }
    QImage image(pixels, pixels, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    drawing.render(&painter);
    painter.end();
    return image.save(png, "PNG");
}

}  // namespace

int main(int argc, char* argv[]) {
    const auto argument = [&](int number) {
        return number < argc ? QString::fromLocal8Bit(argv[number]) : QString();
    };
    if (draw(argument(1), argument(2).toInt(), argument(3), argument(4).toDouble()))
        return EXIT_SUCCESS;
    static_cast<void>(std::fputs("usage: draw-icon SVG PIXELS PNG [UNITS]\n", stderr));
    return EXIT_FAILURE;
}
