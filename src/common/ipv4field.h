#pragma once

class QLineEdit;

// An address field: it takes dotted IPv4 text only, four numbers of 0-255 of up to three
// digits each (what UnitControl reads an address from).
void takeIpv4Only(QLineEdit *edit);
