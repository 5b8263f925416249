// What most files of the core include, compiled once. Each file still includes what it needs: the
// preset `plain` builds without this.
#pragma once

#include <QByteArray>
#include <QDate>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QList>
#include <QObject>
#include <QRegularExpression>
#include <QSaveFile>
#include <QScopeGuard>
#include <QScopedValueRollback>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <algorithm>
#include <array>
#include <cmath>
#include <exception>
#include <functional>
#include <limits>
#include <memory>
#include <optional>
#include <stdexcept>
#include <utility>
#include <vector>
