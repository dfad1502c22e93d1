// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QStringList>
#include <QWidget>

/// What a plot shows. Times are in seconds since 1970; the points go from the oldest to the newest.
struct PlotData {
    struct Point {
        qint64 time = 0;
        int value = 0;
        int label = -1; ///< of `labels`: what else is to be said of it
    };
    struct Mark {
        qint64 time = 0;
        QString text;
    };

    qint64 from = 0; ///< where the plot begins and ends
    qint64 to = 0;
    qint64 gap = 1800; ///< points that are further apart are not joined
    QList<Point> points;
    QStringList labels;
    QList<Mark> marks; ///< lines across, with their texts where there is room
    QString unit;      ///< behind a value, "players"
    int most = 0;      ///< what is greater is drawn at the upper edge; 0 when everything has room
};

/// Values over time, with axes, marks and the figures of the point that the pointer or the arrow keys are at. It is a
/// widget of our own because the ready-made ones do not fit: Qt's charts are under the GPL alone in this version of Qt,
/// and the others that a system brings are larger than this program, for one line in one colour.
class TimePlot final : public QWidget {
    Q_OBJECT

public:
    explicit TimePlot(QWidget *parent = nullptr);

    void setData(const PlotData &data_);
    void clear() { setData({}); }
    [[nodiscard]] bool isEmpty() const { return data.points.isEmpty(); }
    /// What is said of the point that was chosen; empty when none is.
    [[nodiscard]] QString figures() const;
    /// The plot as a picture in the PNG format.
    [[nodiscard]] QByteArray png();

    [[nodiscard]] QSize sizeHint() const override { return {320, 180}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return {160, 90}; }

protected:
    void paintEvent(QPaintEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    void paint(QPainter &painter, bool isPicture) const;
    void paintValueAxis(QPainter &painter) const;
    void paintTimeAxis(QPainter &painter) const;
    void paintMarks(QPainter &painter) const;
    void paintLine(QPainter &painter) const;
    void paintChosen(QPainter &painter) const;
    void choose(qsizetype point);
    void tell();
    [[nodiscard]] qsizetype nearest(double x) const;
    [[nodiscard]] qsizetype neighbour(int direction) const;
    [[nodiscard]] QRect area() const;
    [[nodiscard]] int top() const;
    /// From times and values to places in the widget.
    struct Scale {
        double left = 0;
        double bottom = 0;
        double perSecond = 0;
        double perValue = 0;
        qint64 from = 0;

        [[nodiscard]] double x(qint64 time) const { return left + static_cast<double>(time - from) * perSecond; }
        [[nodiscard]] double y(int value) const { return bottom - value * perValue; }
    };
    [[nodiscard]] Scale scale() const;
    [[nodiscard]] QColor faint() const;

    PlotData data;
    int highest = 1;       ///< value of the upper edge
    qsizetype chosen = -1; ///< a point
};
