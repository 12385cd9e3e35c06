#pragma once

/// Replaces eight methods of SpringBoard's lock-screen classes and adds four. A class that is not there is passed over.
/// To be called once.
void installHookTable();
