#pragma once

// Which state record a unit sends back when asked for its state. The RVX3410 record is the
// RVX3210 one with three bit fields after it; the RVX5350 codes its wipe its own way; the
// RVX3220 (and the RVX5120, which opens unbound) sends nothing a panel reads.
enum class StateLayout
{
    None,
    Rvx3210,
    Rvx3410,
    Series8000,
    Rvx5350,
};
