#pragma once

#include <QString>

/** Names the report document's namespace; it must not be empty, or the root loses its prefix. */
inline const QString organisationDomain = QStringLiteral("tovask.example");

/** Whom a mailed report would be addressed to. The e-mail action composes no message yet. */
inline const QString serviceDepartmentName = QStringLiteral("Tovask service department");
inline const QString supportEmailAddress = QStringLiteral("support@tovask.example");
