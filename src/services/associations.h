// The program as the opener of the game's file types.
#pragma once

#include "services/settings.h"

namespace wb
{

class clsRegistryObject;

// Brings the registry in line with the settings PKG, GI, GAI, HAI and AFT: registers this program, whose
// folder is `programFolder`, as the opener of each type that is on, and removes the registration of each that
// is off. Cheap when nothing changes; what fails is not told.
void ApplyAssociations(const Settings &settings, const QString &programFolder, clsRegistryObject &registry);

} // namespace wb
