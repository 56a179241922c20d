#include "ipv4field.h"

#include <QLineEdit>
#include <QRegularExpressionValidator>

namespace {
constexpr char Ipv4Pattern[] = "((2[0-4]\\d|25[0-5]|[01]?\\d\\d?)\\.){3}(2[0-4]\\d|25[0-5]|[01]?\\d\\d?)";
} // namespace

void takeIpv4Only(QLineEdit *edit)
{
    edit->setValidator(
        new QRegularExpressionValidator(QRegularExpression(QString::fromLatin1(Ipv4Pattern)), edit));
}
