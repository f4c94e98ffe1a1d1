#pragma once
// OSVersionFamily: the one question that the file and path classes ask about the system,
// whether it belongs to the Windows NT family. It never does here: the answer is false.

class OSVersionFamily {
public:
    OSVersionFamily() = default;

    bool isNTFamily() const { return m_ntFamily; }

private:
    bool m_ntFamily = false;
};
