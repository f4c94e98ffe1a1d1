#pragma once
// Everything that this program says to the filter service goes through these two calls. They
// serialise the message, hand its bytes to the plug-in's RPC object (m_pRPCExt) for the
// server "SharedRPCServer", and turn the status into a result; an error status is traced and
// the message is lost. There are no retries and no waits here: a failed message is not
// queued or repeated, and the next tick of the ping timer is what notices a service that has
// come back. Both calls block for as long as the RPC object takes; they are made on the GUI
// thread.

class IMessage;

// True when the status is 1. A reply, if the RPC object gives one, goes back to it unread.
bool SendRpcMessage(const IMessage& msg);

// True when the status is 1 and `reply` was filled from the answer. A reply of another id
// leaves `reply` as the caller built it, and is traced.
bool SendRpcMessageWithReply(const IMessage& msg, IMessage& reply);
