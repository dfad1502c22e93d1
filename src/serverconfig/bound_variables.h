// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class BoundControl;
class Conversation;

/// How the value of a variable follows its name in a command.
enum class ValueForm {
    Plain, ///< behind a blank: name 1
    Quoted ///< in double quotes, without a blank: name"1"
};

/// This is what the pages with bound controls have in common. Each control shows the server variable that its `Tag`
/// names, is filled from the reply to "dvarlist", and is sent back when it has changed. Each page tells what it does
/// differently.

/// Asks for the variables that `pattern` describes and waits for the whole reply. False when nothing came. Throws
/// NotConnected when the server has been left for another meanwhile.
bool readGroup(const Conversation &talk, const QString &pattern);

/// The value that the reply gives to the server variable `name`. Empty when it does not occur. Throws InvalidCall.
[[nodiscard]] QString valueInReply(const Conversation &talk, const QString &name);

/// Fills `control` from the reply, also with nothing, and clears its dirty mark. Throws what its conversion throws.
void fill(const Conversation &talk, BoundControl &control);

/// The same, but a value that is empty or missing leaves the control and its dirty mark as they are.
void fillUnlessEmpty(const Conversation &talk, BoundControl &control);

/// Sends `control`'s value, changed or not. The dirty mark is cleared first, so that an edit during the exchange sets
/// it again.
void send(const Conversation &talk, BoundControl &control, ValueForm form);

/// Sends the value and confirms it in the message list, when the control's dirty mark is set.
void sendIfChanged(const Conversation &talk, BoundControl &control, ValueForm form, const QString &confirmation);
