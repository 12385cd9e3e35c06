#pragma once

/// Makes the class of Solvane's page in the Settings known to the runtime. Its superclass must be there.
void registerSVSettingsController();
