#include "service/ControlOperation.h"

std::string_view NameOf(ControlOperation operation) {
    switch (operation) {
    case ControlOperation::Emit:
        return "emit";
    case ControlOperation::Counts:
        return "counts";
    case ControlOperation::SimulateFiltering:
        return "simulate-filtering";
    case ControlOperation::Fault:
        return "fault";
    case ControlOperation::Status:
        return "status";
    }
    return "unknown";
}
