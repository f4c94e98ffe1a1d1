#pragma once
// _Module: the program's one application object, made during static initialisation (before
// main) and destroyed after main has returned. Only the program's entry refers to it; the
// rest of the program is handed what it needs, so that the tests, which make application
// objects of their own in sandbox roots, never make this one.

class CVLQuillgateApp;

extern CVLQuillgateApp& _Module;
