#include "app/ui/InstalledApplicationsModel.h"

#include <QCollator>
#include <algorithm>
#include <cstddef>
#include <iterator>

#include "app/shell/Collator.h"

namespace corvane {

void InstalledApplicationsModel::setFilter(const QString& filter) {
    if (filter != filter_) {
        filter_ = filter;
        show();
        Q_EMIT filterChanged();
    }
}

void InstalledApplicationsModel::load() {
    isLoading_ = true;
    Q_EMIT isLoadingChanged();
    applications_.list(
        lifetime_.bound([this](const InstalledApplications::List& applications) { take(applications); }));
}

void InstalledApplicationsModel::take(const InstalledApplications::List& applications) {
    all_.clear();
    for (const InstalledApplication& application : applications) {
        all_.push_back({QString::fromStdString(application.identifier),
                        QString::fromStdString(application.name),
                        QString::fromStdString(application.iconName)});
    }
    const QCollator collator = userCollator(locale_);
    std::stable_sort(all_.begin(), all_.end(), [&](const Item& left, const Item& right) {
        return collator.compare(left.name, right.name) < 0;
    });
    isLoading_ = false;
    show();
    Q_EMIT isLoadingChanged();
}

void InstalledApplicationsModel::show() {
    beginResetModel();
    shown_.clear();
    std::copy_if(all_.begin(), all_.end(), std::back_inserter(shown_), [&](const Item& item) {
        return item.name.contains(filter_.trimmed(), Qt::CaseInsensitive);
    });
    endResetModel();
    Q_EMIT countChanged();
}

int InstalledApplicationsModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : count();
}

QVariant InstalledApplicationsModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const Item& item = shown_[static_cast<std::size_t>(index.row())];
    switch (role) {
        case identifierRole:
            return item.identifier;
        case nameRole:
            return item.name;
        case iconNameRole:
            return item.iconName;
        default:
            return {};
    }
}

QHash<int, QByteArray> InstalledApplicationsModel::roleNames() const {
    return {{identifierRole, "identifier"}, {nameRole, "name"}, {iconNameRole, "iconName"}};
}

}  // namespace corvane
