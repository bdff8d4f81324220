#!/usr/bin/env bash
# Imports the unpacked Python module: python_module.sh ROOT VERSION. It must find the component, and tools its
# metadata.
set -euo pipefail
unset LD_LIBRARY_PATH KOLVANE_FOLDER
export PYTHONPATH=$1/usr/lib/python3/dist-packages PYTHONDONTWRITEBYTECODE=1
[ "$(/usr/bin/python3 -c 'import kolvane; print(kolvane.MainClass().CanUnload, kolvane.__file__.startswith("'"$1"'"))')" = "False True" ]
[ "$(/usr/bin/python3 -c 'import pyvisa; print(pyvisa.ResourceManager("@kolvane"))')" = "Resource Manager of Visa Library at kolvane" ]
[ "$(/usr/bin/python3 -c 'import importlib.metadata; print(importlib.metadata.version("kolvane"))')" = "$2" ]
