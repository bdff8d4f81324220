"""Read by the type checker alone: device objects of the tests and of the example fit the protocols."""

import kolvane
from device_object_test import Indexed, Single
from python_host import SimulatedScale

indexed: kolvane.IndexedHost = Indexed()
single: kolvane.SingleHost = Single()
scale: kolvane.SingleHost = SimulatedScale()
