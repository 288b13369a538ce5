#pragma once

#include <QAbstractListModel>
#include <QByteArray>
#include <QHash>
#include <QString>
#include <QVariant>
#include <QtQmlIntegration>
#include <vector>

#include "platform/InstalledApplications.h"
#include "platform/Lifetime.h"
#include "platform/Locale.h"

namespace corvane {

/// The applications that the user can pick one of: those whose name contains the filter, in the order of the
/// user's language. Empty until it is told to load. Main loop.
class InstalledApplicationsModel final : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the application")

    /// What a name must contain, upper and lower case alike; blanks around it do not count.
    Q_PROPERTY(QString filter READ filter WRITE setFilter NOTIFY filterChanged)
    /// A list is on its way.
    Q_PROPERTY(bool isLoading READ isLoading NOTIFY isLoadingChanged)
    /// There is none to pick, whatever the filter.
    Q_PROPERTY(bool isEmpty READ isEmpty NOTIFY isLoadingChanged)
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    /// Texts, under the names "identifier", "name" and "iconName".
    enum Role { identifierRole = Qt::UserRole + 1, nameRole, iconNameRole };

    /// Both outlive the model.
    InstalledApplicationsModel(InstalledApplications& applications, const Locale& locale)
        : applications_(applications), locale_(locale) {}

    [[nodiscard]] QString filter() const { return filter_; }
    [[nodiscard]] bool isLoading() const { return isLoading_; }
    [[nodiscard]] bool isEmpty() const { return all_.empty(); }
    [[nodiscard]] int count() const { return static_cast<int>(shown_.size()); }

    void setFilter(const QString& filter);

    /// Asks the system again; what was known stays until it answers.
    Q_INVOKABLE void load();

    [[nodiscard]] int rowCount(const QModelIndex& parent) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void filterChanged();
    void isLoadingChanged();
    void countChanged();

private:
    struct Item {
        QString identifier;
        QString name;
        QString iconName;
    };

    void take(const InstalledApplications::List& applications);
    void show();

    InstalledApplications& applications_;
    const Locale& locale_;
    std::vector<Item> all_;
    std::vector<Item> shown_;
    QString filter_;
    bool isLoading_ = false;
    Lifetime lifetime_;
};

}  // namespace corvane
