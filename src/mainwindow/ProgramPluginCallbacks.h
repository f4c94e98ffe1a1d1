#pragma once
// The program's own handlers for the plug-in's RPC object, as the loader binds them: those
// of the inbound message path, one per message id.

#include "mainwindow/PluginCallbacks.h"

PluginCallbacks ProgramPluginCallbacks();
