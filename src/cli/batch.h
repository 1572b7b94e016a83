#pragma once

#include "apps.h"

#include <functional>

/// Does `work` to each of `apps`, until Ctrl-C. It gives true when it has done it; why it has not
/// is what the core has told. What `done` says of an application is the line that tells of it.
void doToEach(const std::vector<ZPK_App*>& apps, const std::function<bool(ZPK_App& app)>& work,
              const std::function<QString(const ZPK_App& app)>& done);
