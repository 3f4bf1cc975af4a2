// SPDX-License-Identifier: MIT
#include "FixtureImport/JsonKeyOrder.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace FixtureImport {

namespace {

/// The end of the string that begins at `at`, behind its closing quote.
int EndOfString(const QByteArray& json, int at)
{
    for (++at; at < json.size() && json[at] != '"'; ++at) {
        if (json[at] == '\\')
            ++at;
    }
    return at + 1;
}

bool IsKey(const QByteArray& json, int behind)
{
    while (behind < json.size() && QChar::isSpace(static_cast<uchar>(json[behind])))
        ++behind;
    return behind < json.size() && json[behind] == ':';
}

/// A string with its quotes, as the JSON reader understands it.
QString Unquoted(const QByteArray& quoted)
{
    return QJsonDocument::fromJson('[' + quoted + ']').array().at(0).toString();
}

} // namespace

QStringList JsonKeysInOrder(const QByteArray& json, const QStringList& path)
{
    QStringList keys;
    int depth = 0;   // of objects and arrays around the place
    int matched = 0; // keys of the path whose values hold the place
    for (int at = 0; at < json.size();) {
        const char c = json[at];
        if (c != '"') {
            depth += static_cast<int>(c == '{' || c == '[');
            depth -= static_cast<int>(c == '}' || c == ']');
            const bool endsValue = c == ',' || c == '}' || c == ']';
            if (endsValue && depth <= matched) {
                if (!keys.isEmpty())
                    return keys;
                matched = qMax(0, depth - 1);
            }
            ++at;
            continue;
        }
        const int end = EndOfString(json, at);
        if (depth == matched + 1 && IsKey(json, end)) {
            const QString key = Unquoted(json.mid(at, end - at));
            if (matched == path.size())
                keys += key;
            else if (key == path[matched])
                ++matched; // its value is one deeper
        }
        at = end;
    }
    return keys;
}

} // namespace FixtureImport
