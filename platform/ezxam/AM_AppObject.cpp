#include "AM_AppObject.h"

#include "ZConfig.h"

AM_AppObject::AM_AppObject(const ZConfig& file, const QString& group)
    : m_uuid(QUuid::fromString(group)), m_name(file.readEntry(group, "Name", QString())),
      m_type(file.readEntry(group, "Type", QString()).toInt()),
      m_icon(file.readEntry(group, "Icon", QString())),
      m_attribute(file.readEntry(group, "Atribute", QString())),
      m_bigIcon(file.readEntry(group, "BigIcon", QString())),
      m_directory(file.readEntry(group, "Directory", QString())),
      m_exec(file.readEntry(group, "Exec", QString())),
      m_vendor(file.readEntry(group, "Vendor", QString())) {}
