// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// A stand-in for a file manager: a small window from which files can be dragged into another
// program.
//
//     window_drag_source X Y FILE
//
// stands at the point (X, Y) of the screen. A drag that begins on it carries the bytes of FILE, as
// they are at that moment, as text/uri-list; where they begin with "key:", what follows is the key
// under which the desktop's portal has the files, and the list is empty. When the drag is over,
// what became of it is written to standard output, a line each: "copy", "move", "link" or "none".

#include <memory>
#include <utility>

#include <QtCore/QFile>
#include <QtCore/QMimeData>
#include <QtCore/QTextStream>
#include <QtGui/QDrag>
#include <QtGui/QMouseEvent>
#include <QtGui/QPixmap>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

namespace {

constexpr auto kUriList = "text/uri-list";
constexpr auto kTransferKey = "application/vnd.portal.filetransfer";
constexpr auto kKeyFollows = "key:";

/// Delivers the bytes as they are: QMimeData itself would take them apart into QUrls and put them
/// together again, which changes a URI that is not as Qt would write it.
class RawURIList : public QMimeData {
 public:
    explicit RawURIList(QByteArray bytes) : bytes_(std::move(bytes)) {}

    [[nodiscard]] QStringList formats() const override { return {kUriList}; }
    [[nodiscard]] bool hasFormat(const QString& format) const override {
        return format == kUriList;
    }

 protected:
    [[nodiscard]] QVariant retrieveData(const QString& format, QMetaType /*type*/) const override {
        return format == kUriList ? QVariant(bytes_) : QVariant();
    }

 private:
    QByteArray bytes_;
};

[[nodiscard]] QString nameOf(Qt::DropAction action) {
    switch (action) {
        case Qt::CopyAction:
            return "copy";
        case Qt::MoveAction:
            return "move";
        case Qt::LinkAction:
            return "link";
        default:
            return "none";
    }
}

class DragSource : public QWidget {
 public:
    explicit DragSource(QString path) : path_(std::move(path)) {
        // It must neither take the focus when it appears nor disappear below the program under
        // test.
        setWindowFlags(Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
        setAttribute(Qt::WA_ShowWithoutActivating);
        setFixedSize(120, 80);
        setWindowTitle("Drag source");
    }

 protected:
    void mousePressEvent(QMouseEvent* event) override { pressedAt_ = event->position(); }

    void mouseMoveEvent(QMouseEvent* event) override {
        const double moved = (event->position() - pressedAt_).manhattanLength();
        if (dragging_ || moved < QApplication::startDragDistance()) return;
        dragging_ = true;
        // Qt owns the drag and deletes it; the drag owns its data.
        QDrag* const drag = std::make_unique<QDrag>(this).release();
        drag->setMimeData(dragged().release());
        // The usual picture below the pointer would be in the way of looking at the pixels there.
        QPixmap invisible(1, 1);
        invisible.fill(Qt::transparent);
        drag->setPixmap(invisible);
        const Qt::DropAction action =
            drag->exec(Qt::CopyAction | Qt::MoveAction | Qt::LinkAction, Qt::CopyAction);
        dragging_ = false;
        QTextStream(stdout) << nameOf(action) << Qt::endl;
    }

 private:
    [[nodiscard]] std::unique_ptr<QMimeData> dragged() const {
        const QByteArray bytes = read();
        if (!bytes.startsWith(kKeyFollows)) return std::make_unique<RawURIList>(bytes);
        auto keyed = std::make_unique<QMimeData>();
        keyed->setData(kTransferKey, bytes.mid(QByteArray(kKeyFollows).size()));
        return keyed;
    }

    [[nodiscard]] QByteArray read() const {
        QFile file(path_);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QString path_;
    QPointF pressedAt_;
    bool dragging_ = false;
};

}  // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() != 4) {
        QTextStream(stderr) << "usage: window_drag_source X Y FILE" << Qt::endl;
        return 2;
    }
    DragSource source(arguments[3]);
    source.move(arguments[1].toInt(), arguments[2].toInt());
    source.show();
    return QApplication::exec();
}
