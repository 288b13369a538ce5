#pragma once

#include <QColor>
#include <QQuickPaintedItem>
#include <QString>

namespace corvane {

/// A symbol by its name, in one colour. An unknown name shows nothing. It is no control: whoever shows it
/// says what it means.
class Symbol : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(QString name READ name WRITE setName NOTIFY nameChanged)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)

public:
    explicit Symbol(QQuickItem* parent = nullptr);

    [[nodiscard]] QString name() const { return name_; }
    [[nodiscard]] QColor color() const { return color_; }

    void setName(const QString& name);
    void setColor(const QColor& color);

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void nameChanged();
    void colorChanged();

private:
    /// Edge of the square it takes when nobody says otherwise.
    static constexpr double naturalEdge = 18;

    QString name_;
    QColor color_ = Qt::black;
};

}  // namespace corvane
