#pragma once

#include <QMetaProperty>
#include <QObject>
#include <QVariant>
#include <iostream>

namespace corvane {

/// Prints a property whenever it changes, and once to begin with.
class PropertyPrinter final : public QObject {
    Q_OBJECT

public:
    explicit PropertyPrinter(const QObject& printed) : printed_(printed) {
        const QMetaMethod slot = metaObject()->method(metaObject()->indexOfSlot("print()"));
        const QMetaObject& type = *printed.metaObject();
        for (int i = type.propertyOffset(); i < type.propertyCount(); ++i) {
            connect(&printed, type.property(i).notifySignal(), this, slot);
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
        if (value.canConvert<QString>()) {
            std::cout << property.name() << ' ' << value.toString().toStdString() << std::endl;
        }
    }

    const QObject& printed_;
};

}  // namespace corvane
