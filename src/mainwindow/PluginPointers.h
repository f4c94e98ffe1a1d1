#pragma once
// The program's hold on the plug-in: the five objects that the loader takes from the
// library's factories and the library's handle. Null before loading; never reset or
// released, so after the library is freed they point into nothing and must not be used.
// Standard types only, so that the message library (which has no window system) reads
// m_pRPCExt from here. Inline variables: one object each, whichever library includes this.

class IQGStandAlone;
class IQGPlugin;
class IQGCommonUI;
class IQGInfo;
class IRPCExt;

inline IQGStandAlone* m_pStandAlone = nullptr;
inline IQGPlugin* m_pPlugin = nullptr;
inline IQGCommonUI* m_pCommonUI = nullptr;
inline IQGInfo* m_pQGInfo = nullptr;
inline IRPCExt* m_pRPCExt = nullptr;
// The handle that dlopen gave for the library, null when it is not loaded.
inline void* m_hPluginModule = nullptr;
