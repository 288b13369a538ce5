#pragma once

#include <QMetaProperty>
#include <QObject>
#include <QVariant>
#include <iostream>

namespace corvane {

/// Prints a model's properties, each whenever it changes and once to begin with: "PREFIX.PROPERTY VALUE".
class PropertyPrinter final : public QObject {
    Q_OBJECT

public:
    PropertyPrinter(const char* prefix, const QObject& printed) : prefix_(prefix), printed_(printed) {
        const QMetaMethod slot = metaObject()->method(metaObject()->indexOfSlot("print()"));
        const QMetaObject& type = *printed.metaObject();
        for (int i = type.propertyOffset(); i < type.propertyCount(); ++i) {
            connect(&printed, type.property(i).notifySignal(), this, slot, Qt::UniqueConnection);
            write(type.property(i));
        }
    }

private:
    Q_SLOT void print() {
        const QMetaObject& type = *printed_.metaObject();
        for (int i = type.propertyOffset(); i < type.propertyCount(); ++i) {
            if (type.property(i).notifySignalIndex() == senderSignalIndex()) {
                write(type.property(i));
            }
        }
    }

    /// Values that have no text are left out.
    void write(const QMetaProperty& property) {
        const QVariant value = property.read(&printed_);
        if (value.metaType() == QMetaType::fromType<QStringList>()) {
            writeLine(property, value.toStringList().join(','));
        } else if (value.canConvert<QString>()) {
            writeLine(property, value.toString());
        }
    }

    void writeLine(const QMetaProperty& property, const QString& value) {
        std::cout << prefix_ << '.' << property.name() << ' ' << value.toStdString() << std::endl;
    }

    const char* prefix_;
    const QObject& printed_;
};

}  // namespace corvane
