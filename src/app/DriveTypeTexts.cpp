#include "app/DriveTypeTexts.h"

#include "localisation/QGEntString.h"

#include "resource.h"

stdstr DriveTypeTexts::Of(int type) {
    switch (type) {
    case Invalid:
        return u"Invalid";
    case Removable:
        return QGEntString(IDS_DRIVE_REMOVABLE);
    case Fixed:
        return QGEntString(IDS_DRIVE_LOCAL);
    case Remote:
        return QGEntString(IDS_DRIVE_NETWORK);
    case Optical:
        return QGEntString(IDS_DRIVE_DVD_CDRW);
    case RamDisk:
        return u"RAM Disk";
    case Floppy:
        return QGEntString(IDS_DRIVE_FLOPPY);
    default:
        return u"Unknown";
    }
}
