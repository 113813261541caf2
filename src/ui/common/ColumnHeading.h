#pragma once

#include <QString>

// The Turkish heading of a person's column: column names are written without Turkish letters
// ("Adi", "Sifre"), their headings are not ("Adı", "Şifre"). Other names are their own heading.
QString columnHeading(const QString& column);
