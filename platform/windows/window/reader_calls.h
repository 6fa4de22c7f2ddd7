// reader_calls: what the system has for screen readers, looked up so that systems without it still
// load the module.

#pragma once

#include "platform/windows/windows_api.h"
// The objects' header wants the other one first.
#include <oleauto.h>

using AllocText = BSTR(WINAPI*)(const OLECHAR*);
using WrapObject = LRESULT(WINAPI*)(REFIID, WPARAM, IUnknown*);
using FindParent = HRESULT(WINAPI*)(HWND, DWORD, REFIID, void**);
using DisconnectObject = HRESULT(WINAPI*)(IUnknown*, DWORD);
using OpenLibrary = HRESULT(WINAPI*)(void*);
using CloseLibrary = void(WINAPI*)();
using NotifyEvent = void(WINAPI*)(DWORD, HWND, LONG, LONG);

struct ReaderCalls {
  AllocText allocText;
  WrapObject wrapObject;
  FindParent findParent;
  DisconnectObject disconnectObject;
  OpenLibrary openLibrary;
  CloseLibrary closeLibrary;
};

// Null where the system has no such procedure. The first call loads their libraries, so that nobody
// waits for these before a screen reader has asked.
const ReaderCalls& readerCalls();

// Tells screen readers that something has happened, null where the system cannot.
NotifyEvent notifyCall();
