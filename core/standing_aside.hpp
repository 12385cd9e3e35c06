#pragma once

/// Whether the library must leave the process as it is: because this is not SpringBoard, or because a class or a protocol of a
/// name of ours is there already (another extension's, or that of a second copy of the library) and cannot be made again. One
/// line of the system log tells the reason. To be asked once, before anything is made.
bool mustStandAside();
